#include "app/settings.h"

#include <algorithm>
#include <cmath>

namespace tolvek {

static_assert(kAppMajor == TOLVEK_MAJOR && kAppMinor == TOLVEK_MINOR &&
              kAppRevision == TOLVEK_PATCH);

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

Text versionText()
{
    return decimal(kAppMajor) + u"." + decimal(kAppMinor) + u"." + decimal(kAppRevision);
}

Int16 friendTwips(double twips)
{
    return static_cast<int>(std::nearbyint(std::clamp(twips, -32768.0, 32767.0)));
}

}
