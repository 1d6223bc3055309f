#include "shell/base/settings.h"

#include "platform/runtime/directory.h"
#include "platform/runtime/paths.h"
#include "shell/base/general.h"
#include "shell/base/guard.h"

#include <algorithm>
#include <cmath>

namespace tolvek {

Text gIniPath;
std::int32_t gVer = 0;
Text gPostPetDir;
Text gMyMailAddr;
Text gMyMailHandle;
Text gMyPetName;
Int16 gDisplayType;
CheckedArray<Int16, 17> gSendMailReadOption;
CheckedArray<Int16, 17> gRecievMailReadOption;
Text gMailTextFont;
std::int32_t gMailTextFontSize = 0;
Text gMailTextFontStyle;
Int16 gFriendTop, gFriendLeft, gFriendWidth, gFriendHeight;
CheckedArray<Int16, 6> gFriendColWidth;

namespace {

const Text kSettingsName = u"TOLVEK.ini";

}

Text versionText()
{
    return decimal(kAppMajor) + u"." + decimal(kAppMinor) + u"." + decimal(kAppRevision);
}

// An early version kept the file in the Windows folder. It goes from there
// whether or not the copy was made: a file that stands beside the executable
// already is never overwritten. The steps are the splash form's load and are
// reported as such; gIniPath is set whatever happens to the old file.
void findSettingsFile()
{
    ResumeNext on{u"Form_Load"};
    const Text target = joinPath(appPath(), kSettingsName);
    on([&] {
        const Text windows = GetWinDir();
        if (windows.empty()) return;
        const Text old = joinPath(windows, kSettingsName);
        if (!FileNameCheck(old)) return;
        CopyFileA(old, target, 1);
        kill(old);
    });
    gIniPath = target;
}

Int16 friendTwips(double twips)
{
    return static_cast<int>(std::nearbyint(std::clamp(twips, -32768.0, 32767.0)));
}

}
