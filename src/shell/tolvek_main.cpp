#include "shell/tolvek_main.h"

#include "dialogs/frm_splash.h"
#include "platform/dao/alone.h"
#include "platform/forms/msg_box.h"
#include "platform/runtime/numbers.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/profile.h"
#include "shell/base/frm_tolvek.h"
#include "shell/base/general.h"
#include "shell/base/guard.h"
#include "shell/base/settings.h"
#include "store/before_load.h"
#include "store/database_files.h"
#include "store/db_compress.h"
#include "store/db_start.h"
#include "store/table_create.h"
#include "store/text_dump_set.h"

#include <optional>

namespace tolvek {

Application App;

namespace {

constexpr int kBufferSize = 255;

// Nothing has been touched yet: the first copy and all files stay as they are.
void refuseSecondCopy(const ResumeNext& on)
{
    on([] { MsgBox(u"Tolvekはすでに実行されています。"); });
    endProgram();
}

Text databasePath()
{
    return joinPath(appPath(), u"Tolvek.Mdb");
}

// What another program has at work isn't touched. What can't be settled is told and ends the program, with the files as they
// are: the steps behind would delete the very file that is still to be put back.
void settleEarlierRun(const ResumeNext& on, bool upgrade)
{
    std::optional<Alone> alone;
    const auto take = [&] { alone.emplace(databasePath(), Alone::With::File); };
    const bool settled =
        on(take) && on([] { undoCutOffLoads(appPath()); }) && on(take) && // of the file that is there now
        on([] { restoreFromNew(databasePath()); }) &&
        on([&] { settleCutOffUpgrade(databasePath(), upgrade); }) &&
        (databaseExists(databasePath()) || on([] { keepBackUpAside(databasePath()); }));
    if (!settled) endProgram();
    on([] { removeUnfinished(databasePath()); });
}

void findDatabase(const ResumeNext& on)
{
    on([] { gHelpPath = joinPath(appPath(), u"Tolvek.hlp"); });
    on([] { gDbPath = databasePath(); });
    if (FileNameCheck(gDbPath) == 0) on([] { Table_Create(); });
}

// A splash that failed to come up has no label.
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
    const bool newer = Ver != kLastOld && !(compareText(Ver, kLastOld, Compare::Binary) < 0);
    return !newer;
}

void prepareDatabase(TextView Ver, const UpgradeProgress& progress)
{
    const ResumeNext on{u"Main"};
    const bool upgrade = upgradeNeeded(Ver);
    settleEarlierRun(on, upgrade);
    on([] { settleTextFiles(); });
    if (upgrade) on([&] { VerUp300(progress); });
    findDatabase(on);
    on([] { dbCompress(gDbPath); });
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
    on([&] { window.Load(); });
    on([&] { window.Show(); });
    on([&] { splash.Unload(); });
}

}
