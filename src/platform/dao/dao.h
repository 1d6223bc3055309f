// The database objects of the Basic platform over SQLite.
//
// Objects are light handles: copying one shares what it stands for. A handle
// that stands for nothing, and a recordset whose database was closed, is error
// 3420; closing a closed database is silent. All failures are RuntimeError.
//
// One file at rest: while no Session lives, a database closed is a file closed,
// with no -wal, -shm or -journal beside it and all of it on the disk. Inside a
// Session the engine keeps the connection from one OpenDatabase to the next;
// commits survive a kill of the process at any moment.
//
// One thread.
#pragma once
#include "platform/dao/statement.h"
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace tolvek {

inline constexpr int dbOpenDynaset = 2;
inline constexpr int dbFailOnError = 128;

enum DataType : int { dbBoolean = 1, dbInteger = 3, dbLong = 4, dbText = 10, dbMemo = 12 };

// One value of a row. Null is error 94 when turned into anything.
class Value {
public:
    Value() = default; // Null
    explicit Value(Text text);
    explicit Value(std::int64_t number, DataType type);

    bool isNull() const;
    Text text() const;   // numbers as decimals, Yes/No as "True" and "False"
    Int16 int16() const; // a text by the text-to-number rules
    std::int32_t int32() const;
    bool boolean() const; // any non-zero number, "True", "False"

private:
    enum class Kind { Null, Characters, Number } kind_ = Kind::Null;
    Text text_;
    std::int64_t number_ = 0;
    DataType type_ = dbText;
};

// A definition while a table is being made.
class Field {
public:
    Field(TextView name, DataType type, int size);
    Text Name;
    DataType Type;
    int Size; // characters, dbText only
    bool AllowZeroLength = false;
    Text DefaultValue; // "" for none; "\"\"" is the empty text
};

class FieldList {
public:
    void Append(const Field& field);
    const std::vector<Field>& items() const { return items_; }

private:
    std::vector<Field> items_;
};

class Index {
public:
    explicit Index(TextView name);
    Field CreateField(TextView name) const;
    Text Name;
    bool Primary = false;
    bool Unique = false;
    FieldList Fields;
};

class IndexList {
public:
    void Append(const Index& index);
    const std::vector<Index>& items() const { return items_; }

private:
    std::vector<Index> items_;
};

class TableDef {
public:
    explicit TableDef(TextView name);
    Field CreateField(TextView name, DataType type, int size = 0) const;
    Index CreateIndex(TextView name) const;
    Text Name;
    FieldList Fields;
    IndexList Indexes;
};

// A dynaset, of SELECT with * or a list of columns FROM one table: the ordered keys are fetched at
// opening, rows and columns when they are asked for, so that counting never reads a mail's text.
// Behind the order asked for (or without one) rows come in primary key order. A recordset doesn't
// keep its database open.
class Recordset {
public:
    Recordset();

    bool Eof() const;
    bool NoMatch() const;             // always false: nothing searches in a dynaset
    std::int32_t RecordCount() const; // rows visited so far; 0 only when there are none
    void MoveFirst();                 // no rows: 3021
    void MoveNext();                  // at the end already: 3021
    void MoveLast();
    // Of the current row. No row: 3021; deleted meanwhile: 3167; no such
    // column: 3265; no such position: 3265.
    Value field(TextView name) const;
    Value field(int position) const;

    void AddNew();
    void setField(int position,
                  const Text& value); // error 3163, 3315, 3464, 3349 here or at Update
    void setField(int position, std::int32_t value);
    void Update(); // 3022 for a key that is there; a commit of its own
    void Close();

private:
    friend class Database;
    struct State;
    std::shared_ptr<State> state_;
};

class TableDefList;

class Database {
public:
    Database();

    Recordset OpenRecordset(const Statement& sql, int type = dbOpenDynaset);
    // The statement as a whole or not at all.
    void Execute(const Statement& sql, int options);
    TableDef CreateTableDef(TextView name) const;
    TableDefList TableDefs();
    bool HasRows(TextView table); // without reading any; no such table: 3078
    // The workspace's open transaction is rolled back and ends, if this
    // database took part in it or nothing was done in it yet.
    void Close();
    bool isOpen() const;

private:
    friend class DBEngine;
    friend class Workspace;
    friend class TableDefList;
    struct State;
    std::shared_ptr<State> state_;
};

class TableDefList {
public:
    void Append(const TableDef& table); // the table and its indexes, as a whole
    std::vector<Text> names() const;

private:
    friend class Database;
    std::shared_ptr<Database::State> state_;
};

class Workspace {
public:
    void BeginTrans();  // inner ones belong to the outermost
    void CommitTrans(); // without BeginTrans: 3034; of work that a full disk undid: 3034
    void Rollback();    // of all levels
    // A present target: 3204. `locale` names the sort order; there is one.
    Database CreateDatabase(TextView path, TextView locale);
};

class DBEngine {
public:
    static Workspace Workspaces(int index); // 0 alone, else 3265
    // A missing file: 3024; not a database, or not one of this program's archives
    // (setArchiveTables): 3343; held exclusively by another program: 3356, at once. A file on a
    // read-only medium can be read. A Jet file of the home platform is shown through a private
    // copy: it stays as it is, and writing is 3027. Damaged: 3343, here already. Of a form that
    // isn't known, which says nothing against the file: 3041. Where Jet files
    // can't be read at all for now (no reader, no memory for one): 429.
    static Database OpenDatabase(TextView path);
    // Writes a new file, checks it, and forces file and folder to the disk.
    // Source missing 3024, target present 3204, source damaged 3343. A Jet file
    // becomes one of this format; 429 and 3041 as above; 3041 also
    // for another program's database: nothing is known to be wrong with it, but no
    // other may take its place.
    static void CompactDatabase(TextView source, TextView target);
    // Adds to `target`, a sound database, the rows of these tables that can still
    // be read in damaged files of this format: those whose primary key it doesn't
    // hold. A row that looks damaged comes in only where its row number is free as
    // well, so it never stands beside or in the place of the sound one. Gives the
    // number of rows added. The damaged files are only read.
    static int SalvageRows(const std::vector<Text>& damaged, TextView target,
                           const std::vector<TableDef>& tables);

    // What the program knows of the tables that come from Jet files; an empty
    // function: nothing.
    struct KnownTables {
        // Its own definition of a table with that name and exactly those columns,
        // of those types; none for any other table.
        std::function<std::optional<TableDef>(const TableDef& found)> own;
        // Whether a file may hold these tables and no others; if not, it is damaged.
        std::function<bool(const std::vector<TableDef>& found)> areWhole;
    };
    static void setKnownTables(KnownTables known);
    // How many texts of Jet files have come, since this was last asked, with a
    // U+0000 in them. They are taken over as they are; but no version of the
    // program wrote such a text: it is what a zeroed part of the file leaves.
    static int takeSpoiltTexts();
    // From here on only archives are opened: files that hold these tables, or
    // others that `isArchive` takes for one's, and nothing that acts by itself.
    using IsArchive = std::function<bool(const std::vector<TableDef>&)>;
    static void setArchiveTables(std::vector<TableDef> tables, IsArchive isArchive);

    // The time of one command: the connection is kept between openings.
    // Sessions may nest; the outermost one's end puts the file at rest.
    class Session {
    public:
        Session();
        ~Session();
        Session(const Session&) = delete;
        Session& operator=(const Session&) = delete;
    };
    // Puts files at rest that no Database holds, also inside a Session: before
    // the program waits for its user.
    static void Rest();
    // For an end in the middle of anything: rolls back, closes all, at rest.
    static void Abandon();
};

// BeginTrans, the work, CommitTrans, on workspace 0. A failure goes through
// without a rollback of ours: the closing of the database ends it.
void inTransaction(const std::function<void()>& work);

}
