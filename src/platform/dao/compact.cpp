#include "platform/dao/engine.h"
#include "platform/dao/jet_import.h"
#include "platform/dao/on_disk.h"
#include "platform/runtime/paths.h"
#include "platform/system/files.h"

#include <cstdlib>

namespace tolvek {

namespace {

using std::filesystem::path;

constexpr const char* kSideSuffix = ".Compact";

// A check goes from every row to each of its index entries, all over the file:
// with room for the whole of it no page is read twice. Only as much is taken as
// there are pages, and only while the compaction runs.
constexpr TextView kRoomForChecks = u"PRAGMA cache_size = -524288";

// The check tells of a page that the disk didn't give in the same words as of
// a damaged one, with the engine's code behind them.
bool isUnread(const Text& found)
{
    constexpr TextView kWords = u"unable to get the page. error code=";
    const auto at = found.find(kWords);
    if (at == Text::npos) return false;
    const std::string code = toUtf8(TextView(found).substr(at + kWords.size()));
    return (std::atoi(code.c_str()) & 0xFF) == SQLITE_IOERR;
}

// A disk that fails once is no damage: 3343 makes the user be asked whether the
// database is to be given up.
void requireSound(Connection& connection, TextView check)
{
    connection.pragma(kRoomForChecks);
    const Text found = connection.pragma(check);
    if (found == u"ok") return;
    throw isUnread(found) ? RuntimeError(57) : RuntimeError(3343, pathText(connection.path()));
}

void writeCopy(Connection& source, const path& side)
{
    requireSound(source, u"PRAGMA integrity_check");
    onDisk([&] { OpenFile(side, OpenFile::Mode::Anew).close(); });
    const auto query = source.query(u"VACUUM INTO ?1");
    query->bind(1, TextView(pathText(side))).run();
}

// The source has been found sound, so a copy that isn't was spoilt on its way.
// Told as 3343 it would be taken for the source's damage, and a whole database
// be offered to be replaced by an empty one. Every page is looked at; whether
// each row has its index entries was found out in the source, from which the
// copy's pages come, and would be half of the time of a start.
void verify(const path& side)
{
    try {
        const auto copy = Connection::open(side);
        requireSound(*copy, u"PRAGMA quick_check");
        copy->close();
    } catch (const RuntimeError& error) {
        if (error.number() == 3343) throw RuntimeError(57);
        throw;
    }
}

void copyOwn(const std::shared_ptr<Connection>& source, const path& side)
{
    OpenHandle opened(source);
    writeCopy(*opened.connection, side);
    opened.close();
}

void copyTo(const path& source, const path& side)
{
    if (const auto own = Engine::instance().acquireOwn(source, 3041))
        copyOwn(own, side);
    else if (isJetFile(source))
        importJet(source, side);
    else
        copyOwn(Engine::instance().acquire(source), side);
    verify(side);
    Engine::instance().rest(); // the callers rename the source next
}

// Left there by a database of that name which is gone; the engine would play
// them into the new one.
void removeJournals(const path& database)
{
    for (const char* suffix : {"-journal", "-wal", "-shm"}) {
        path journal = database;
        journal += suffix;
        if (fileExists(journal)) removeFile(journal);
    }
}

// A name that may be gone after a power cut isn't given at all.
void flushNewName(const path& target)
{
    try {
        flushFolder(target.parent_path());
    } catch (const std::system_error&) {
        removeFile(target);
        throw;
    }
}

void putInPlace(const path& side, const path& target)
{
    onDisk([&] {
        flushFileToDisk(side);
        removeJournals(target);
        renameFile(side, target);
        flushNewName(target);
    });
}

// Only what this routine left there, now or in a run that was killed.
void removeSide(const path& side)
{
    if (fileExists(side)) onDisk([&] { removeFile(side); });
}

// 53 is passed over by callers that would go on and delete the source; and
// someone else's file in the target's place is a target that is there.
RuntimeError retold(const RuntimeError& error)
{
    if (error.number() == 53) return RuntimeError(75);
    if (error.number() == 58) return RuntimeError(3204);
    return error;
}

void compact(const path& source, const path& target)
{
    path side = target;
    side += kSideSuffix;
    removeSide(side);
    try {
        copyTo(source, side);
        putInPlace(side, target);
    } catch (const RuntimeError&) {
        removeSide(side);
        throw;
    }
}

}

void DBEngine::CompactDatabase(TextView source, TextView target)
{
    const path from = absoluteOf(source), to = absoluteOf(target);
    if (!fileExists(from)) throw RuntimeError(3024, source);
    if (fileExists(to) || folderExists(to)) throw RuntimeError(3204);
    if (!folderExists(to.parent_path())) throw RuntimeError(76);
    try {
        compact(from, to);
    } catch (const RuntimeError& error) {
        throw retold(error);
    }
}

}
