// The writing half of a connection: its transactions and groups, the write-ahead log,
// the lock against other programs, and the way back to a file at rest.
#include "platform/dao/connection.h"
#include "platform/dao/dao_errors.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/runtime_error.h"
#include "platform/system/files.h"

#include <utility>

namespace tolvek {

void Connection::prepareToWrite(bool manyCommits)
{
    if (readOnly_) throw readOnlyError();
    if (manyCommits && !log_ && !inTransaction()) enterLog();
    written_ = true;
}

// Any transaction takes the lock, and in the exclusive mode SQLite keeps it.
void Connection::keepOthersOut()
{
    if (readOnly_) return;
    settle();
    if (alone_) letOthersIn(); // the system may have dropped the lock; take it again
    alone_ = true;
    try {
        pragma(u"PRAGMA locking_mode = EXCLUSIVE");
        pragma(u"BEGIN EXCLUSIVE");
        pragma(u"COMMIT");
    } catch (const RuntimeError&) {
        letOthersIn();
        throw;
    }
}

void Connection::letOthersIn()
{
    const bool shares = std::exchange(alone_, false) && !log_;
    if (shares) shareLock();
}

// Meaningful only under the lock, which keeps other programs from replacing the file.
void Connection::requirePlace()
{
    if (hasMoved()) throw lockedError(name_);
}

// The lock comes first: under an exclusive lock the log's index is in memory, and no
// -shm file is created.
void Connection::enterLog()
{
    written_ = true;
    if (!alone_) keepOthersOut();
    requirePlace();
    log_ = true;
    if (pragma(u"PRAGMA journal_mode = WAL") != u"wal") throw lockedError(name_);
    pragma(u"PRAGMA synchronous = NORMAL");
}

void Connection::begin(bool inGroup)
{
    if (!inGroup) endGroup();
    // After a full disk the engine itself has rolled the group back.
    if (!group_ || !inTransaction()) {
        pragma(u"BEGIN IMMEDIATE");
        if (hasMoved()) {
            pragma(u"ROLLBACK");
            throw lockedError(name_);
        }
        if (inGroup) beginGroup();
    }
    if (inGroup) pragma(u"SAVEPOINT part");
    part_ = inGroup;
}

void Connection::beginGroup()
{
    group_ = true;
    groupBegun_ = std::chrono::steady_clock::now();
}

void Connection::commit(std::chrono::milliseconds longest)
{
    if (!std::exchange(part_, false)) {
        pragma(u"COMMIT");
        return;
    }
    pragma(u"RELEASE part");
    if (std::chrono::steady_clock::now() - groupBegun_ >= longest) endGroup();
}

void Connection::rollback()
{
    const bool onlyPart = std::exchange(part_, false);
    if (!inTransaction()) return;
    if (onlyPart) {
        pragma(u"ROLLBACK TO part");
        pragma(u"RELEASE part");
    } else if (!group_) {
        pragma(u"ROLLBACK");
    }
}

void Connection::endGroup()
{
    if (!std::exchange(group_, false) || !inTransaction()) return;
    try {
        pragma(u"COMMIT");
    } catch (const RuntimeError&) {
        group_ = inTransaction(); // the engine may have rolled it back
        throw;
    }
}

// Full synchronisation first: the checkpoint is what makes the commits of the log safe
// against a power cut.
void Connection::settle()
{
    if (!part_) endGroup();
    if (!log_ || !isOpen() || inTransaction()) return;
    pragma(u"PRAGMA synchronous = FULL");
    // The engine may have left the log already, and failed to say so in the header.
    if (pragma(u"PRAGMA journal_mode") != u"wal") pragma(u"PRAGMA journal_mode = WAL");
    pragma(u"PRAGMA wal_checkpoint(TRUNCATE)");
    if (pragma(u"PRAGMA journal_mode = DELETE") != u"delete") throw lockedError(name_);
    shareLock();
    log_ = alone_ = false;
}

// A file that has moved isn't this connection's business any more.
void Connection::force()
{
    if (!written_ || hasMoved()) return;
    asFileError([&] {
        flushFileToDisk(path_);
        flushFolder(folder());
    });
}

void Connection::restOnce()
{
    rollback();
    settle();
    letOthersIn();
    force();
}

// A disk that failed once may well do it now. The failure is reported all the same:
// a flush that succeeds after a failed one says nothing about what that one lost.
void Connection::rest()
{
    if (!isOpen()) return;
    try {
        restOnce();
    } catch (const RuntimeError& failure) {
        const RuntimeError first = failure;
        try {
            restOnce();
        } catch (const RuntimeError&) {
            // The log stays beside the file, and the next opening takes it in.
        }
        throw first;
    }
}

}
