// The database objects of the classic platform, implemented over SQLite.
//
// The objects are light handles: copies share the same object. Using an empty handle,
// or a recordset whose database was closed, is error 3420. Closing a closed database is
// silent. All failures are RuntimeError.
//
// At rest: outside a Session, closing a database closes its file, flushes it, and
// leaves no -wal, -shm or -journal beside it. Inside a Session the engine keeps the
// connection from one OpenDatabase to the next. Commits survive a kill of the process
// at any moment.
//
// For one thread only.
#pragma once
#include "platform/dao/statement.h"
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace tolvek {

inline constexpr int dbOpenDynaset = 2;
inline constexpr int dbFailOnError = 128;

enum DataType : int { dbBoolean = 1, dbInteger = 3, dbLong = 4, dbText = 10, dbMemo = 12 };

// One value of a row. Converting Null to anything is error 94.
class Value {
public:
    Value() = default; // Null
    explicit Value(Text text);
    explicit Value(std::int64_t number, DataType type);

    bool isNull() const;
    Text text() const;   // numbers as decimals, Yes/No as "True" and "False"
    Int16 int16() const; // a text is converted by the text-to-number rules
    std::int32_t int32() const;
    bool boolean() const; // any non-zero number, "True", "False"

private:
    enum class Kind { Null, Characters, Number } kind_ = Kind::Null;
    Text text_;
    std::int64_t number_ = 0;
    DataType type_ = dbText;
};

// The definition of a field, for creating a table.
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

// A dynaset over SELECT with * or a list of columns FROM one table. The ordered keys are
// fetched when it is opened; rows and columns are read on access, so that counting never
// reads a mail's text. Rows that the given order leaves equal (or all, without one) are
// in the order of the primary key. A recordset doesn't keep its database open.
class Recordset {
public:
    Recordset();

    bool Eof() const;
    bool NoMatch() const;             // always false: nothing searches in a dynaset
    std::int32_t RecordCount() const; // rows visited so far; 0 only when there are none
    void MoveFirst();                 // no rows: 3021
    void MoveNext();                  // at the end already: 3021
    void MoveLast();
    // A field of the current row. No row: 3021; row deleted since it was fetched: 3167;
    // no such column or position: 3265.
    Value field(TextView name) const;
    Value field(int position) const;

    void AddNew();
    void setField(int position,
                  const Text& value); // error 3163, 3315, 3464, 3349 here or at Update
    void setField(int position, std::int32_t value);
    void Update(); // 3022 for a key that exists; commits unless in a transaction
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
    // The statement takes effect completely or not at all.
    void Execute(const Statement& sql, int options);
    TableDef CreateTableDef(TextView name) const;
    TableDefList TableDefs();
    bool HasRows(TextView table); // reads at most one row's key; no such table: 3078
    // Rolls back the workspace's open transaction if this database took part in it, or
    // if nothing has been done in it yet.
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
    void Append(const TableDef& table); // the table and its indexes, or nothing
    std::vector<Text> names() const;

private:
    friend class Database;
    std::shared_ptr<Database::State> state_;
};

class Workspace {
public:
    void BeginTrans();  // nested ones are part of the outermost
    void CommitTrans(); // 3034 without BeginTrans, or if a full disk has undone the work
    void Rollback();    // of all levels
    // Error 3204 if the file exists. `locale` names the sort order; there is only one.
    Database CreateDatabase(TextView path, TextView locale);
};

class DBEngine {
public:
    static Workspace Workspaces(int index); // only 0, else 3265
    // Missing file: 3024. Not a database, or not an archive (setArchiveTables): 3343.
    // Locked exclusively by another program: 3356, at once. A file on a read-only medium
    // can be read. A Jet file of the classic platform is shown through a private copy and
    // never changed; writing is 3027. If it is corrupt: 3343, already here. If its format
    // isn't known, which doesn't mean that it is corrupt: 3041. If Jet files can't be read
    // at present (no reader, not enough memory for it): 429.
    static Database OpenDatabase(TextView path);
    // Writes a new file, checks it, and flushes file and folder. Source missing 3024,
    // target exists 3204, source corrupt 3343. A Jet file is converted to this program's
    // format; 429 and 3041 as above. 3041 also for another program's database: it may be
    // sound, but must not be replaced by a copy.
    static void CompactDatabase(TextView source, TextView target);
    // What the target is called until the copy is finished.
    static constexpr TextView kUnfinishedSuffix = u".Compact";
    // Adds the rows of these tables that can still be read in corrupt files to `target`,
    // a sound database, unless `target` has a row with the same primary key. A row that
    // looks damaged is added only if its row number is free too, so it is never added
    // beside its sound version. Returns the number of rows added. The corrupt files are
    // only read.
    static int SalvageRows(const std::vector<Text>& damaged, TextView target,
                           const std::vector<TableDef>& tables);

    // What the program knows about the tables of Jet files. An empty function means
    // that it knows nothing.
    struct KnownTables {
        // The program's own definition of a table with that name and exactly those
        // columns and types; none for any other table.
        std::function<std::optional<TableDef>(const TableDef& found)> own;
        // Whether a sound file may hold exactly these tables.
        std::function<bool(const std::vector<TableDef>& found)> areWhole;
    };
    static void setKnownTables(KnownTables known);
    // The number of texts with a U+0000 that were imported from Jet files since the last
    // call. They are imported unchanged, but no version of the program wrote such texts:
    // a part of the file was zeroed.
    static int takeSpoiltTexts();
    // From then on only archives can be opened: files with these tables, or with others
    // that `isArchive` accepts, and without views and foreign triggers.
    using IsArchive = std::function<bool(const std::vector<TableDef>&)>;
    static void setArchiveTables(std::vector<TableDef> tables, IsArchive isArchive);

    // The duration of one command: connections are kept between openings. Sessions may
    // nest; the end of the outermost one puts the files at rest.
    class Session {
    public:
        Session();
        ~Session();
        Session(const Session&) = delete;
        Session& operator=(const Session&) = delete;
    };
    // Joins the transactions of workspace 0 while it lives, so that a page which many of
    // them change is written once. Each transaction stays a unit of its own: it is
    // there as a whole or not at all, and its rollback leaves the others. A kill may
    // lose the finished ones of the last `longest`, so this is only for what can be read
    // again. Being put at rest, and with it every box, ends a group early; the next
    // transaction begins another. Groups don't nest.
    class CommitGroup {
    public:
        explicit CommitGroup(std::chrono::milliseconds longest);
        ~CommitGroup();
        CommitGroup(const CommitGroup&) = delete;
        CommitGroup& operator=(const CommitGroup&) = delete;
        // Commits what is finished. After a failure the next commit tries it again.
        void end();
    };
    // Puts the files at rest that have no open Database, also inside a Session. Call
    // before the program waits for its user.
    static void Rest();
    // For a program end at any point: rolls back, closes all files and leaves them at
    // rest. Never throws.
    static void Abandon();
};

// BeginTrans, the work, CommitTrans, on workspace 0. A failure propagates without a
// rollback; closing the database rolls back.
void inTransaction(const std::function<void()>& work);

}
