#include "shell/tolvek_main.h"

#include "dialogs/frm_splash.h"
#include "platform/forms/msg_box.h"
#include "platform/runtime/numbers.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/profile.h"
#include "shell/base/frm_tolvek.h"
#include "shell/base/general.h"
#include "shell/base/guard.h"
#include "shell/base/settings.h"
#include "store/db_compress.h"
#include "store/db_start.h"
#include "store/table_create.h"

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

void findDatabase(const ResumeNext& on)
{
    on([] { gHelpPath = joinPath(appPath(), u"Tolvek.hlp"); });
    on([] { gDbPath = joinPath(appPath(), u"Tolvek.Mdb"); });
    if (FileNameCheck(gDbPath) != 0) return;
    on([] { restoreFromNew(gDbPath); });
    if (FileNameCheck(gDbPath) != 0) return;
    on([] { Table_Create(); });
    if (FileNameCheck(gDbPath) == 0) return; // nothing will rotate over the .Bak then
    on([] { keepBackUpAside(gDbPath); });
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

void Main(frmSplash& splash, frmTolvek& window)
{
    const ResumeNext on{u"Main"};
    if (App.PrevInstance == -1) refuseSecondCopy(on);
    on([&] { splash.Show(); });
    on([&] { splash.Refresh(); });
    Text Ver;
    on([&] { Ver = lastVersion(); });
    findDatabase(on);
    on([] { dbCompress(gDbPath); });
    on([&] { window.Load(); });
    on([&] { window.Show(); });
    on([&] { splash.Unload(); });
}

}
