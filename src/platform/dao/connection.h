// One open database file.
//
// Two manners. With the rollback journal (as opened): every commit is on the
// disk, nothing stands beside the file between statements. With the write-ahead
// log (while a session writes): small commits are cheap and survive a kill, the
// file is held exclusively, and settle() brings it back to the first manner.
//
// No statement stays active between two calls, so the manner can be changed
// and no lock is left at any time.
#pragma once
#include "platform/dao/jet_head.h"
#include "platform/dao/query.h"
#include "platform/dao/table.h"

#include <filesystem>
#include <map>
#include <memory>

namespace tolvek {

class Connection {
public:
    // Missing file 3024, no database 3343, held by another program 3356. A file that
    // can only be shown through a private copy gives none and isn't touched: one of
    // the home platform's engine (Jet), and one with a journal to be taken back where
    // nothing can be written.
    static std::shared_ptr<Connection> open(const std::filesystem::path& path);
    // A copy that stands in for another file: read-only, told under that one's name.
    static std::shared_ptr<Connection> openCopy(const std::filesystem::path& copy,
                                                const std::filesystem::path& original);
    // The file must not be there.
    static std::shared_ptr<Connection> create(const std::filesystem::path& path);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    // One query at a time: making another may clear the cache that holds it.
    std::unique_ptr<Query> query(TextView sql);
    // One that came from the program: failures get the numbers of statements.
    std::unique_ptr<Query> query(const SqlText& sql);
    // Beside the cache, also while a query is in use; the first column of the first row.
    Text pragma(TextView sql);
    const Table& table(TextView name);
    void forgetTables() { tables_.clear(); }

    const std::filesystem::path& path() const { return path_; }
    bool isOpen() const { return handle_ != nullptr; }
    // The name leads to another file now, or to none.
    bool hasMoved() const;
    bool inTransaction() const { return sqlite3_get_autocommit(handle_) == 0; }
    std::int64_t changes() const { return sqlite3_total_changes64(handle_); }
    std::int64_t lastRow() const { return sqlite3_last_insert_rowid(handle_); }

    // Other programs find the file locked from here on, also between transactions;
    // 3356 when one of them is at work on it. A file that can't be written is left.
    void keepOthersOut();
    void letOthersIn();
    // Changes when another program has written the file since the last look, and
    // through nothing that was done here.
    Text version() { return pragma(u"PRAGMA data_version"); }

    // Before anything is written. `manyCommits`: with the write-ahead log. What is
    // written into a file that has moved would be gone with it: 3356.
    void prepareToWrite(bool manyCommits);
    void begin();
    void commit();
    void rollback();
    // Leaves the write-ahead log; within a transaction nothing happens.
    void settle();
    // Rolls back, settles, lets others in, and what was written is on the disk; the
    // file stays open.
    void rest();
    // The same, and closes.
    void close();

    // How long a statement waits for another program before 3356.
    static void setPatience(int milliseconds);
    static int patience();

    int holders = 0; // databases that stand on it

private:
    explicit Connection(std::filesystem::path path);
    void openHandle(int flags);
    void configure();
    void limit();
    bool needsRecovery() const;
    void setManner();
    void look();
    void shareLock();
    std::filesystem::path beside(const char* suffix) const;
    void removeColdJournal();
    FileHead head() const;
    bool headerSaysLog() const;
    bool hasOwnHeader() const;
    bool headerSaysRest() const;
    void removeForeignLog();
    void enterLog();
    void requirePlace();
    void force();
    sqlite3_stmt* prepared(TextView sql, const SqlText* statement);
    void finalizeAll();
    void closeHandle();

    std::filesystem::path path_;
    Text name_;
    sqlite3* handle_ = nullptr;
    std::map<Text, sqlite3_stmt*, std::less<>> statements_;
    std::map<Text, Table> tables_;
    bool log_ = false;
    bool alone_ = false; // a lock once taken isn't given back
    bool written_ = false;
    bool readOnly_ = false;
};

}
