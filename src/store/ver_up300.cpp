#include "store/ver_up300.h"

#include "app/database.h"
#include "app/file_names.h"
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
    return sideFile(path, kV300Suffix);
}

Text markOf(const Text& path)
{
    return sideFile(path, kUpgradeSuffix);
}

bool isMarked(const Text& path)
{
    return databaseExists(markOf(path));
}

// The lock is held as long as the upgrade runs, even while one of its boxes waits.
FileLock lockedMark(const Text& path)
{
    FileLock lock(existingPath(markOf(path)), FileLock::Missing::Leave);
    if (lock.isHeldElsewhere()) throw RuntimeError(3356);
    return lock;
}

// The mark and its name are on the disk before the rename that follows.
void setMark(const Text& path)
{
    OpenFile mark(targetPath(markOf(path)), OpenFile::Mode::Anew);
    mark.write("While this file exists, the .V300 beside it is the whole archive.\r\n");
    mark.flush();
    mark.close();
    flushFolderOf(path);
}

void removeMark(const Text& path)
{
    removeFile(existingPath(markOf(path)));
    flushFolderOf(path);
}

// The mark is removed last, so that the next start finishes this if it is cut off.
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

// Runs before the mark is set. So a .V300 that exists together with the mark is always
// the database of this upgrade and never that of an earlier one.
void dropEarlierOld()
{
    removeDatabase(oldOf(gDbPath));
    DoEvents();
}

// The mark is locked before the lock on the database is given up, so another start
// always meets one of the two.
void makeWayForNew(FileLock& mark)
{
    flushFolderOf(gDbPath);
    setMark(gDbPath);
    mark = lockedMark(gDbPath);
    renameDatabase(gDbPath, oldOf(gDbPath));
    flushFolderOf(gDbPath);
}

// A missing mark means that the copy is complete, so the rows are flushed first.
void finish()
{
    DBEngine::Rest();
    removeMark(gDbPath);
    writeVersion();
}

// The failure has been reported. If the start went on, it would work on an incomplete
// copy or on tables of the older form, and at its end it would store that no upgrade
// is needed. So the program ends here, and the next start tries again.
[[noreturn]] void leaveUnfinished(const PassOver53& steps)
{
    const bool neverLeftItsName = isMarked(gDbPath) && !databaseExists(oldOf(gDbPath));
    if (neverLeftItsName) steps([] { removeMark(gDbPath); });
    endProgram();
}

void upgrade(const PassOver53& steps, const UpgradeProgress& progress)
{
    steps([] { dbCompress(gDbPath); }, DoEvents);
    if (!isOldArchive(gDbPath)) return; // the compaction has replaced a corrupt one by a newer
    FileLock mark;
    std::optional<Alone> alone;
    // The last yield is unconditional: flushing the copied rows may take seconds.
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

// Without an old database there is nothing to restore, and gDbPath is the new one. The
// caller ignores error 53.
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

// The failure is reported by the plain report, which never ends the program: the old
// database must get its name back first.
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
