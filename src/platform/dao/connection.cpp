#include "platform/dao/connection.h"

#include "platform/dao/dao_errors.h"
#include "platform/dao/general_order.h"
#include "platform/dao/probe_vfs.h"
#include "platform/dao/test_hooks.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/runtime_error.h"
#include "platform/system/files.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace tolvek {

namespace {

constexpr std::size_t kKeptStatements = 100;
constexpr std::uintmax_t kHeaderSize = 100; // of an SQLite file
constexpr std::chrono::milliseconds kPatience{5000};
int patienceSet = static_cast<int>(kPatience.count());

// SQLite passes pointers into its pages, where a text may begin at an odd address.
TextView aligned(const void* bytes, int size, Text& copy)
{
    const std::size_t units = static_cast<std::size_t>(size) / 2;
    if (reinterpret_cast<std::uintptr_t>(bytes) % alignof(char16_t) == 0)
        return TextView(static_cast<const char16_t*>(bytes), units);
    copy.resize(units);
    std::memcpy(copy.data(), bytes, units * 2);
    return copy;
}

int compareGeneralUtf16(void*, int sizeA, const void* a, int sizeB, const void* b)
{
    static Text copyA, copyB; // kept for their memory
    return compareGeneral(aligned(a, sizeA, copyA), aligned(b, sizeB, copyB));
}

}

Connection::Connection(std::filesystem::path path) : path_(std::move(path)), name_(pathText(path_))
{
}

std::shared_ptr<Connection> Connection::open(const std::filesystem::path& path)
{
    std::shared_ptr<Connection> opened(new Connection(path));
    opened->requireHeader();
    // The mode bits count, not the permission to write: root may write any file, but one
    // that is marked read-only must stay unchanged.
    opened->readOnly_ = isReadOnly(path) || isReadOnly(opened->folder());
    opened->openHandle(opened->readOnly_ ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE);
    if (isJet(opened->head())) return nullptr;
    if (opened->readOnly_ && opened->hasAnyJournal()) return nullptr;
    opened->look();
    return opened;
}

std::shared_ptr<Connection> Connection::openToRead(const std::filesystem::path& path)
{
    std::shared_ptr<Connection> opened(new Connection(path));
    opened->requireHeader();
    opened->readOnly_ = true;
    opened->openHandle(SQLITE_OPEN_READONLY);
    if (isJet(opened->head())) return nullptr;
    // A journal isn't touched, and the file isn't locked for it either: a program that
    // takes it in at this moment needs the file for itself.
    if (opened->hasAnyJournal()) {
        opened->requireUnwritten();
        return nullptr;
    }
    opened->pragma(u"PRAGMA cell_size_check = ON"); // doesn't look at the file
    opened->beginReading();
    return opened;
}

std::shared_ptr<Connection> Connection::openCopy(const std::filesystem::path& copy,
                                                 const std::filesystem::path& original)
{
    std::shared_ptr<Connection> opened(new Connection(copy));
    opened->readOnly_ = true;
    opened->openHandle(SQLITE_OPEN_READONLY);
    opened->look();
    opened->path_ = original;
    opened->name_ = pathText(original);
    return opened;
}

std::shared_ptr<Connection> Connection::create(const std::filesystem::path& path)
{
    std::shared_ptr<Connection> created(new Connection(path));
    if (!folderExists(created->folder())) throw RuntimeError(76);
    asFileError([&] { OpenFile(path, OpenFile::Mode::Anew).close(); });
    created->openHandle(SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    // The encoding of the program's texts. The rules of columns and damaged_file.cpp rely
    // on it.
    created->pragma(u"PRAGMA encoding = 'UTF-16le'");
    created->pragma(u"PRAGMA application_id = 1416590923"); // "TovK"; schema_check.cpp compares it
    created->pragma(u"PRAGMA user_version = 1");
    created->setManner();
    created->written_ = true;
    return created;
}

void Connection::requireHeader() const
{
    if (!fileExists(path_)) throw RuntimeError(3024, name_);
    // SQLite would accept an empty file as a database without tables.
    if (std::filesystem::file_size(path_) < kHeaderSize) throw RuntimeError(3343, name_);
}

Connection::~Connection()
{
    // A caller that needs to know of a failure has called close().
    try {
        close();
    } catch (const RuntimeError&) {
        // Committed rows are complete in the file or in its log.
    }
}

std::filesystem::path Connection::folder() const
{
    return path_.has_parent_path() ? path_.parent_path() : std::filesystem::path(".");
}

std::filesystem::path Connection::beside(const char* suffix) const
{
    std::filesystem::path name = path_;
    name += suffix;
    return name;
}

void Connection::openHandle(int flags)
{
    const std::u8string name = path_.u8string();
    // The program has one thread, so SQLite needs no mutexes.
    const int code =
        sqlite3_open_v2(reinterpret_cast<const char*>(name.c_str()), &handle_,
                        flags | SQLITE_OPEN_EXRESCODE | SQLITE_OPEN_NOMUTEX, probeVfs());
    if (code != SQLITE_OK) throw sqliteError(code, handle_, name_);
    readOnly_ = readOnly_ || sqlite3_db_readonly(handle_, "main") == 1;
    configure();
}

// Must not read the file: look() has to check its header first.
void Connection::configure()
{
    sqlite3_create_collation(handle_, "GENERAL", SQLITE_UTF16LE, nullptr, compareGeneralUtf16);
    // A file may have been made to attack the program that opens it: its schema may not
    // be written directly, and its views and functions aren't run. Without DQS, a wrong
    // column name in quotes is an error and not a text.
    sqlite3_db_config(handle_, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(handle_, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(handle_, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    sqlite3_db_config(handle_, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
    sqlite3_db_config(handle_, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    limit();
    sqlite3_busy_timeout(handle_, 0); // a locked file is 3356 at once when it is opened
}

// The limits are far above what this program's statements need. They keep a malicious
// file from making the engine work without end. (The compaction attaches one file.)
void Connection::limit()
{
    constexpr int kMegabyte = 1 << 20;
    for (const auto& [what, most] : {std::pair{SQLITE_LIMIT_SQL_LENGTH, kMegabyte},
                                     {SQLITE_LIMIT_COLUMN, 300},
                                     {SQLITE_LIMIT_COMPOUND_SELECT, 10},
                                     {SQLITE_LIMIT_ATTACHED, 1},
                                     {SQLITE_LIMIT_TRIGGER_DEPTH, 10},
                                     {SQLITE_LIMIT_WORKER_THREADS, 0}})
        sqlite3_limit(handle_, what, most);
}

void Connection::setManner()
{
    pragma(u"PRAGMA synchronous = FULL");
    pragma(u"PRAGMA temp_store = MEMORY");
    pragma(u"PRAGMA cell_size_check = ON");
    pragma(u"PRAGMA cache_size = -16384");
    sqlite3_busy_timeout(handle_, patienceSet);
}

// Reads the file for the first time. This detects at once whether it is corrupt or
// locked, and rolls back what a killed program left unfinished. A rollback may restore
// the header of a file with a log, which can be opened only under an exclusive lock. A
// wrong header without a journal is refused before SQLite reads the file: nothing can
// repair it, and SQLite would delete a log beside it.
void Connection::look()
{
    if (!hasOwnHeader() && !fileExists(beside("-journal"))) throw RuntimeError(3343, name_);
    const bool mayHaveLog = needsRecovery();
    if (mayHaveLog)
        pragma(u"PRAGMA locking_mode = EXCLUSIVE");
    else if (!readOnly_ && headerSaysRest())
        removeForeignLog();
    pragma(u"SELECT count(*) FROM sqlite_master"); // the first read, which recovers
    const bool hasLog = pragma(u"PRAGMA journal_mode") == u"wal";
    log_ = written_ = hasLog && !readOnly_;
    if (mayHaveLog && !hasLog) shareLock();
    if (!readOnly_ && !hasLog) removeColdJournal();
    setManner();
}

// The mode alone doesn't unlock the file; SQLite does that after the next read.
void Connection::shareLock()
{
    pragma(u"PRAGMA locking_mode = NORMAL");
    pragma(u"SELECT count(*) FROM sqlite_master");
}

sqlite3_file* Connection::fileOfEngine() const
{
    sqlite3_file* file = nullptr;
    sqlite3_file_control(handle_, "main", SQLITE_FCNTL_FILE_POINTER, &file);
    return file;
}

// Reads through SQLite's own descriptor: closing another descriptor of the file would
// drop the locks that this process holds on it. A file that is too short gives an empty
// head. A disk error is thrown; otherwise a Jet file would be taken for a corrupt file
// of our own.
FileHead Connection::head() const
{
    sqlite3_file* file = fileOfEngine();
    FileHead head{};
    const int code = file->pMethods->xRead(file, head.data(), static_cast<int>(head.size()), 0);
    if (code == SQLITE_IOERR_SHORT_READ) return {};
    if (code != SQLITE_OK) throw sqliteError(code, TextView(), name_);
    return head;
}

bool Connection::needsRecovery() const
{
    return headerSaysLog() || fileExists(beside("-journal"));
}

bool Connection::hasAnyJournal() const
{
    return needsRecovery() || fileExists(beside("-wal"));
}

// Asks for the lock that every writer takes first, and takes none itself.
void Connection::requireUnwritten() const
{
    int isWritten = 0;
    sqlite3_file* file = fileOfEngine();
    const int code = file->pMethods->xCheckReservedLock(file, &isWritten);
    if (code != SQLITE_OK) throw sqliteError(code, TextView(), name_);
    if (isWritten != 0) throw lockedError(name_);
}

// The lock is taken before the engine looks at the file, which would otherwise play in a
// journal that appears in between. The engine finds that it has the lock, and gives it
// back at the end of its transaction.
void Connection::beginReading()
{
    sqlite3_file* file = fileOfEngine();
    const int code = file->pMethods->xLock(file, SQLITE_LOCK_SHARED);
    if ((code & 0xFF) == SQLITE_BUSY) throw lockedError(name_);
    if (code != SQLITE_OK) throw sqliteError(code, TextView(), name_);
    try {
        requireUnwritten();
        if (hasAnyJournal()) throw lockedError(name_);
        if (!hasOwnHeader()) throw RuntimeError(3343, name_);
        pragma(u"BEGIN");
        pragma(u"SELECT count(*) FROM sqlite_master"); // from here on the engine has the lock
    } catch (const RuntimeError&) {
        endReading();
        throw;
    }
}

void Connection::endReading()
{
    rollback();
    sqlite3_file* file = fileOfEngine();
    file->pMethods->xUnlock(file, SQLITE_LOCK_NONE);
}

// Bytes 18 and 19 are the write and read version of the format: 2 is a file with a
// write-ahead log, 1 one with a rollback journal.
bool Connection::headerSaysLog() const
{
    const FileHead header = head();
    return header[18] == 2 && header[19] == 2;
}

bool Connection::hasOwnHeader() const
{
    constexpr std::string_view magic("SQLite format 3\0", 16);
    const FileHead header = head();
    return std::equal(magic.begin(), magic.end(), header.begin());
}

bool Connection::headerSaysRest() const
{
    const FileHead header = head();
    return hasOwnHeader() && header[18] == 1 && header[19] == 1;
}

// A journal that still exists after the first read has nothing to roll back: a program
// was killed before it wrote into it. The transaction takes the lock, so the journal
// isn't in use by another program either.
void Connection::removeColdJournal()
{
    const std::filesystem::path journal = beside("-journal");
    if (!fileExists(journal)) return;
    try {
        begin();
    } catch (const RuntimeError& error) {
        if (error.number() == 3356) return;
        throw;
    }
    asFileError([&] { removeFile(journal); });
    rollback();
}

// A file at rest never has a log. A log beside it is from another file of that name,
// and SQLite would play it into this one.
void Connection::removeForeignLog()
{
    const std::filesystem::path log = beside("-wal");
    if (fileExists(log)) asFileError([&] { removeFile(log); });
}

bool Connection::hasMoved() const
{
    int moved = 0;
    sqlite3_file_control(handle_, "main", SQLITE_FCNTL_HAS_MOVED, &moved);
    return moved != 0;
}

// A full cache is cleared as a whole: a program run has few different statements.
sqlite3_stmt* Connection::prepared(TextView sql, const SqlText* statement)
{
    if (const auto kept = statements_.find(sql); kept != statements_.end()) return kept->second;
    if (statements_.size() >= kKeptStatements) finalizeAll();
    sqlite3_stmt* made = nullptr;
    const int code = sqlite3_prepare16_v3(handle_, sql.data(), static_cast<int>(sql.size() * 2),
                                          SQLITE_PREPARE_PERSISTENT, &made, nullptr);
    if (code == SQLITE_ERROR && statement)
        throw statementError(*this, *statement, fromUtf8(sqlite3_errmsg(handle_)));
    if (code != SQLITE_OK) throw sqliteError(code, handle_, name_);
    return statements_.emplace(sql, made).first->second;
}

std::unique_ptr<Query> Connection::query(TextView sql)
{
    return std::make_unique<Query>(prepared(sql, nullptr), name_);
}

std::unique_ptr<Query> Connection::query(const SqlText& sql)
{
    auto made = std::make_unique<Query>(prepared(sql.sql, &sql), name_);
    made->bindAll(sql.values);
    return made;
}

Text Connection::pragma(TextView sql)
{
    sqlite3_stmt* made = nullptr;
    const int code =
        sqlite3_prepare16_v2(handle_, sql.data(), static_cast<int>(sql.size() * 2), &made, nullptr);
    if (code != SQLITE_OK) throw sqliteError(code, handle_, name_);
    const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> owner(made, sqlite3_finalize);
    Query query(made, name_);
    if (!query.step()) return {};
    Text first = query.text(0);
    query.run();
    return first;
}

const Table& Connection::table(TextView name)
{
    const Text key = upperAscii(name);
    if (const auto known = tables_.find(key); known != tables_.end()) return known->second;
    return tables_.emplace(key, readTable(*this, name)).first->second;
}

void Connection::finalizeAll()
{
    for (const auto& [sql, statement] : statements_)
        sqlite3_finalize(statement);
    statements_.clear();
}

void Connection::closeHandle()
{
    finalizeAll();
    sqlite3_close(handle_);
    handle_ = nullptr;
}

void Connection::close()
{
    if (!isOpen()) return;
    try {
        rest();
    } catch (const RuntimeError&) {
        closeHandle();
        throw;
    }
    closeHandle();
}

int Connection::patience()
{
    return patienceSet;
}

void hooks::setPatience(std::optional<std::chrono::milliseconds> patience)
{
    patienceSet = static_cast<int>(patience.value_or(kPatience).count());
}

}
