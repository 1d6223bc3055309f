// One open database file.
//
// Two modes. Rollback journal (initially): every commit is flushed to the disk, and
// there is no side file between statements. Write-ahead log (while a session writes):
// small commits are cheap and survive a kill of the process, the file is locked
// exclusively, and settle() returns to the first mode.
//
// No statement stays active between two calls, so the mode can be changed and no lock
// is left at any time.
//
// Grouped transactions share one commit of the file; see DBEngine::CommitGroup. Whatever
// ends the lock or the connection ends the group first.
#pragma once
#include "platform/dao/jet_head.h"
#include "platform/dao/query.h"
#include "platform/dao/table.h"

#include <chrono>
#include <filesystem>
#include <map>
#include <memory>

namespace tolvek {

class Connection {
public:
    // Missing file 3024, not a database 3343, locked by another program 3356. Returns
    // null, and leaves the file alone, if it can be shown only through a private copy: a
    // Jet file of the classic platform, or a file with a journal to roll back where
    // nothing can be written.
    static std::shared_ptr<Connection> open(const std::filesystem::path& path);
    // Opens a copy instead of another file: read-only; errors name the original.
    static std::shared_ptr<Connection> openCopy(const std::filesystem::path& copy,
                                                const std::filesystem::path& original);
    // Opens a file of another program: it is never written, locked against that program or
    // recovered. Null as for open(), and also when there is any journal beside it. Error
    // 3356 while it is being written. Reading is allowed between beginReading() and
    // endReading() only, and has begun already when this returns.
    static std::shared_ptr<Connection> openToRead(const std::filesystem::path& path);
    // The file must not exist.
    static std::shared_ptr<Connection> create(const std::filesystem::path& path);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    // One query at a time: making another may clear the cache that holds it.
    std::unique_ptr<Query> query(TextView sql);
    // For a statement of the program: failures get the error numbers of statements.
    std::unique_ptr<Query> query(const SqlText& sql);
    // Runs without the cache, also while a query is in use. Returns the first column of
    // the first row.
    Text pragma(TextView sql);
    const Table& table(TextView name);
    void forgetTables() { tables_.clear(); }

    const std::filesystem::path& path() const { return path_; }
    bool isOpen() const { return handle_ != nullptr; }
    // Whether the name now leads to another file, or to none.
    bool hasMoved() const;
    bool inTransaction() const { return sqlite3_get_autocommit(handle_) == 0; }
    std::int64_t changes() const { return sqlite3_total_changes64(handle_); }
    std::int64_t lastRow() const { return sqlite3_last_insert_rowid(handle_); }

    // Locks the file against other programs, also between transactions; 3356 when one of
    // them has it open. Does nothing for a file that can't be written.
    void keepOthersOut();
    void letOthersIn();
    // A number that changes when another program writes the file, but not when this
    // connection does.
    Text version() { return pragma(u"PRAGMA data_version"); }

    // Call before anything is written. `manyCommits` switches to the write-ahead log.
    // Error 3356 if the file has moved: what is written into it would be lost with it.
    void prepareToWrite(bool manyCommits);
    // The begun transaction is part of a group if `inGroup`. A group that is older than
    // `longest` at the commit of a part ends with it. Only the open part is rolled back.
    void begin(bool inGroup = false);
    void commit(std::chrono::milliseconds longest = {});
    void rollback();
    // Commits the finished parts. What a failure leaves of them is committed with the
    // next ones.
    void endGroup();
    // Leaves the write-ahead log. Does nothing within a transaction.
    void settle();
    // Rolls back, settles, unlocks, and flushes what was written. The file stays open.
    void rest();
    // The same, and closes.
    void close();

    // For openToRead: a stretch in which no other program can write the file. Keep it
    // short, since such a program waits. Error 3356 while one writes it.
    void beginReading();
    void endReading();

    // How long a statement waits for another program before 3356, in milliseconds.
    static int patience();

    int holders = 0; // the number of databases and holds that use it

private:
    explicit Connection(std::filesystem::path path);
    void openHandle(int flags);
    void configure();
    void limit();
    bool needsRecovery() const;
    bool hasAnyJournal() const;
    void requireHeader() const;
    void requireUnwritten() const;
    sqlite3_file* fileOfEngine() const;
    void setManner();
    void look();
    void shareLock();
    std::filesystem::path folder() const;
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
    void restOnce();
    void beginGroup();
    void finalizeAll();
    void closeHandle();

    std::filesystem::path path_;
    Text name_;
    sqlite3* handle_ = nullptr;
    std::map<Text, sqlite3_stmt*, std::less<>> statements_;
    std::map<Text, Table> tables_;
    std::chrono::steady_clock::time_point groupBegun_;
    bool group_ = false; // a transaction holds the finished parts of a group
    bool part_ = false;  // a savepoint in it holds the part that isn't finished
    bool log_ = false;
    bool alone_ = false; // locking_mode is EXCLUSIVE: a lock once taken is kept
    bool written_ = false;
    bool readOnly_ = false;
};

}
