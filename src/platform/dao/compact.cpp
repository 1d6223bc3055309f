#include "platform/dao/engine.h"
#include "platform/dao/jet_import.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/runtime_error.h"
#include "platform/system/files.h"

#include <cstdlib>

namespace tolvek {

namespace {

using std::filesystem::path;

// The check looks up the index entries of every row, all over the file. A cache that
// holds the whole file (512 MB at most) avoids reading pages twice. Memory is used only
// for pages that exist, and only during the compaction.
constexpr TextView kRoomForChecks = u"PRAGMA cache_size = -524288";

// The check reports an unreadable page like a corrupt one; only the appended error code
// differs.
bool isUnread(const Text& found)
{
    constexpr TextView kWords = u"unable to get the page. error code=";
    const auto at = found.find(kWords);
    if (at == Text::npos) return false;
    const std::string code = toUtf8(TextView(found).substr(at + kWords.size()));
    return (std::atoi(code.c_str()) & 0xFF) == SQLITE_IOERR;
}

// A transient disk error isn't corruption. 3343 would make the program ask whether to
// discard the database.
void requireSound(Connection& connection, TextView check)
{
    connection.pragma(kRoomForChecks);
    const Text found = connection.pragma(check);
    if (found == u"ok") return;
    throw isUnread(found) ? RuntimeError(57) : RuntimeError(3343, pathText(connection.path()));
}

// The side file is created first so that it gets the mode of our files; VACUUM INTO accepts an
// empty file.
void writeCopy(Connection& source, const path& side)
{
    requireSound(source, u"PRAGMA integrity_check");
    asFileError([&] { OpenFile(side, OpenFile::Mode::Anew).close(); });
    const auto query = source.query(u"VACUUM INTO ?1");
    query->bind(1, TextView(pathText(side))).run();
}

// The source passed its check, so a corrupt copy was damaged while it was written.
// Reported as 3343, it would be blamed on the source, and the user offered to replace
// a sound database by an empty one. The quick check reads every page but skips the
// comparison of rows with index entries: that was done on the source, and doing it
// again would take half of the time of a start.
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

// The last branch is for a file of our own format that can be read only through a
// private copy (a journal on a read-only medium).
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

// Journals that a removed database of that name left behind. The engine would roll
// them back into the new one.
void removeJournals(const path& database)
{
    for (const char* suffix : {"-journal", "-wal", "-shm"}) {
        path journal = database;
        journal += suffix;
        if (fileExists(journal)) removeFile(journal);
    }
}

// If the folder can't be flushed, undo the rename: the name might not survive a power
// cut, and the caller would delete the source.
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
    asFileError([&] {
        flushFileToDisk(side);
        removeJournals(target);
        renameFile(side, target);
        flushNewName(target);
    });
}

// Nothing else uses that name, so a side file is from this routine: from now, or from a
// run that was killed.
void removeSide(const path& side)
{
    if (fileExists(side)) asFileError([&] { removeFile(side); });
}

// Callers ignore 53 and would go on to delete the source. 58 comes from the rename, when
// another program has created the target in the meantime.
RuntimeError retold(const RuntimeError& error)
{
    if (error.number() == 53) return RuntimeError(75);
    if (error.number() == 58) return RuntimeError(3204);
    return error;
}

void compact(const path& source, const path& target)
{
    path side = target;
    side += toUtf8(DBEngine::kUnfinishedSuffix);
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
