#include "store/ver_up300.h"

#include "app/database.h"
#include "app/file_routines.h"
#include "app/guard.h"
#include "app/program_end.h"
#include "app/settings_file.h"
#include "platform/dao/alone.h"
#include "platform/dao/dao.h"
#include "platform/runtime/do_events.h"
#include "platform/runtime/msg_box.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/runtime_error.h"
#include "platform/system/file_lock.h"
#include "platform/system/files.h"
#include "store/archive_tables.h"
#include "store/database_files.h"
#include "store/db_compress.h"
#include "store/table_create.h"
#include "store/ver_up300_copy.h"

#include <optional>

namespace tolvek {

namespace {

Text oldOf(const Text& path)
{
    return path + u".V300";
}

Text markOf(const Text& path)
{
    return path + u".Upgrade";
}

bool isMarked(const Text& path)
{
    return databaseExists(markOf(path));
}

// Locked for as long as the upgrade runs, also while one of its boxes waits.
FileLock lockedMark(const Text& path)
{
    FileLock lock(existingPath(markOf(path)), FileLock::Missing::Leave);
    if (lock.isHeldElsewhere()) throw RuntimeError(3356);
    return lock;
}

// Both are on the disk before anything behind them is.
void setMark(const Text& path)
{
    OpenFile mark(targetPath(markOf(path)), OpenFile::Mode::Anew);
    mark.write("While this file stands, the .V300 beside it is the whole archive.\r\n");
    mark.flush();
    mark.close();
    flushFolderOf(path);
}

void removeMark(const Text& path)
{
    removeFile(existingPath(markOf(path)));
    flushFolderOf(path);
}

// At every moment the mark tells which of the two files is the whole one.
void putOldBack(const Text& path)
{
    replaceDatabase(oldOf(path), path);
    flushFolderOf(path);
    if (isMarked(path)) removeMark(path);
}

void tellBeginning()
{
    MsgBox(u"Tolvekのバージョンが上がっています。\r\n"
           u"データの整合性を調整しています。\r\n"
           u"多少時間が掛る場合がありますが，そのままお待ち下さい。");
}

// The mark is set once no .V300 of an earlier upgrade stands there: with the
// mark, a .V300 is always what stood under the database's own name.
void dropEarlierOld()
{
    removeDatabase(oldOf(gDbPath));
    DoEvents();
}

// A start beside this one finds the mark locked as soon as the database isn't held.
void makeWayForNew(FileLock& mark)
{
    flushFolderOf(gDbPath);
    setMark(gDbPath);
    mark = lockedMark(gDbPath);
    renameDatabase(gDbPath, oldOf(gDbPath));
    flushFolderOf(gDbPath);
}

// The rows are on the disk before the mark goes, which says that they are there.
void finish()
{
    DBEngine::Rest();
    removeMark(gDbPath);
    writeVersion();
}

// The report has been shown. A start that went on would work on what the copy
// has left, or on tables that it doesn't know, and its end would write down that
// no upgrade is needed any more. So it ends here, and the next one tries again.
[[noreturn]] void leaveUnfinished(const PassOver53& steps)
{
    const bool neverLeftItsName = isMarked(gDbPath) && !databaseExists(oldOf(gDbPath));
    if (neverLeftItsName) steps([] { removeMark(gDbPath); });
    endProgram();
}

void upgrade(const PassOver53& steps, const UpgradeProgress& progress)
{
    steps([] { dbCompress(gDbPath); }, DoEvents);
    if (!isOldArchive(gDbPath)) return; // a damaged one was replaced by a newer
    FileLock mark;
    std::optional<Alone> alone;
    // The last turn is a real one: flushing the copied rows may take seconds.
    const bool complete = steps([&] { alone.emplace(gDbPath); }, dropEarlierOld,
                                [&] { makeWayForNew(mark); }, [&] { alone.reset(); }, DoEvents,
                                Table_Create, [] { keepMode(oldOf(gDbPath), gDbPath); }, DoEvents,
                                [&] { Ver300_DBUpGrade(progress); }, DoEventsNow, finish);
    if (!complete) leaveUnfinished(steps);
}

void copyFromOld(const UpgradeProgress& progress)
{
    gDb = DBEngine::OpenDatabase(gDbPath);
    Database old = DBEngine::OpenDatabase(oldOf(gDbPath));
    copyOldTables(old, progress);
    old.Close();
    gDb.Close();
}

// Without an old database there is nothing to go back to, and what stands under
// its name is the new one: the caller passes over that.
[[noreturn]] void wayBack()
{
    gDb.Close();
    if (!databaseExists(oldOf(gDbPath))) throw RuntimeError(53);
    if (leaveOnError(u"VerUp300", [] { putOldBack(gDbPath); }))
        MsgBox(u"エラーが発生しました。\r\nもう一度やり直すか，作者に連絡してください。");
    endProgram();
}

}

void VerUp300(const UpgradeProgress& progress)
{
    const PassOver53 steps{u"VerUp300"};
    steps(tellBeginning, DoEvents, [] { gDbPath = liveDatabasePath(); });
    if (FileNameCheck(gDbPath) == 0)
        steps(Table_Create);
    else
        upgrade(steps, progress);
}

// Its report is the plain one, with a carriage return alone; no error ends the
// program before the old database is back.
void Ver300_DBUpGrade(const UpgradeProgress& progress)
{
    const bool copied = leavePlainOnError(u"Ver300_DBUpGrade", [&] { copyFromOld(progress); });
    if (!copied) wayBack();
}

void settleCutOffUpgrade(const Text& path, bool isOldVersion)
{
    const FileLock undoing = lockedMark(path);
    const bool marked = isMarked(path);
    const bool isLost = !databaseExists(path) && isOldVersion;
    if (databaseExists(oldOf(path)) && (marked || isLost))
        putOldBack(path);
    else if (marked)
        removeMark(path);
}

}
