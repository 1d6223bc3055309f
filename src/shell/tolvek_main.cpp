#include "shell/tolvek_main.h"

#include "app/database.h"
#include "app/file_routines.h"
#include "app/guard.h"
#include "app/program_end.h"
#include "app/settings.h"
#include "app/state.h"
#include "dialogs/frm_splash.h"
#include "platform/dao/alone.h"
#include "platform/runtime/msg_box.h"
#include "platform/runtime/numbers.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/profile.h"
#include "store/archive_tables.h"
#include "store/before_load.h"
#include "store/database_files.h"
#include "store/db_compress.h"
#include "store/db_start.h"
#include "store/table_create.h"
#include "store/text_dump_set.h"
#include "window/frm_tolvek.h"

#include <optional>

namespace tolvek {

Application App;

namespace {

constexpr int kBufferSize = 255;

// Nothing has been touched yet, so the first copy and all files are unaffected.
void refuseSecondCopy(const ResumeNext& on)
{
    on([] { MsgBox(u"Tolvekはすでに実行されています。"); });
    endProgram();
}

Text folderOf(const Text& path)
{
    return pathText(existingPath(path).parent_path());
}

// A file that another program has open isn't touched. A step that fails is reported and
// ends the program with the files unchanged: the steps after it would delete the very
// file that is still to be restored.
void settleEarlierRun(const ResumeNext& on, bool upgrade)
{
    std::optional<Alone> alone;
    const auto take = [&] { alone.emplace(liveDatabasePath(), Alone::With::File); };
    // The order matters: each step relies on the files that the previous one has
    // restored. A side file is deleted only when nothing is left to be restored from
    // it.
    const bool settled =
        on([] { undoCutOffLoads(folderOf(liveDatabasePath())); }) && on(take) &&
        on([] { restoreFromNew(liveDatabasePath()); }) &&
        on([&] { settleCutOffUpgrade(liveDatabasePath(), upgrade); }) &&
        (databaseExists(liveDatabasePath()) || on([] { keepBackUpAside(liveDatabasePath()); }));
    if (!settled) endProgram();
    on([] { removeUnfinished(liveDatabasePath()); });
}

// The tables decide: the settings file may be missing or belong to another archive.
bool isUpgradeDue(TextView Ver)
{
    const Text path = liveDatabasePath();
    return databaseExists(path) ? isOldArchive(path) : upgradeNeeded(Ver);
}

void findDatabase(const ResumeNext& on)
{
    on([] { gHelpPath = joinPath(appPath(), u"Tolvek.hlp"); });
    on([] { gDbPath = liveDatabasePath(); });
    if (FileNameCheck(gDbPath) == 0) on([] { Table_Create(); });
}

// If the splash failed to load, it has no label.
void showProgress(frmSplash& splash, TextView line)
{
    if (splash.Loaded()) splash.lblWarning->setCaption(line);
}

}

Text lastVersion()
{
    const Text value =
        getProfileString(u"Tolvek Environment", u"Ver", u"999", kBufferSize, gIniPath);
    return decimal(toInt32(cutAtNul(value)));
}

bool upgradeNeeded(TextView Ver)
{
    constexpr TextView kLastOld = u"210";
    // Texts are compared, so "1000" counts as older than "210"; kept.
    const bool newer = Ver != kLastOld && !(compareText(Ver, kLastOld, Compare::Binary) < 0);
    return !newer;
}

void prepareDatabase(TextView Ver, const UpgradeProgress& progress)
{
    const ResumeNext on{u"Main"};
    settleEarlierRun(on, upgradeNeeded(Ver));
    on([] { settleTextFiles(); });
    if (isUpgradeDue(Ver)) on([&] { VerUp300(progress); });
    findDatabase(on);
    // At every start, also after a creation.
    on([] { dbCompress(gDbPath); });
    if (isOldArchive(gDbPath))
        on([&] { VerUp300(progress); }); // a repair may have restored an old one
}

void Main(frmSplash& splash, frmTolvek& window)
{
    const ResumeNext on{u"Main"};
    if (App.PrevInstance == -1) refuseSecondCopy(on);
    on([&] { splash.Show(); });
    on([&] { splash.Refresh(); });
    Text Ver;
    on([&] { Ver = lastVersion(); });
    prepareDatabase(Ver, [&](TextView line) { showProgress(splash, line); });
    // Loading runs Form_Initialize: the settings, the first lists, the friend book.
    on([&] { window.Load(); });
    on([&] { window.Show(); });
    on([&] { splash.Unload(); });
}

}
