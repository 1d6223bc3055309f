// Everything the program remembers outside its database: plain global fields. iniRead
// fills them when the main window starts, iniWrite writes them when it unloads. In
// between, only the fields count; nobody reads the file.
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

#include <cstdint>

namespace tolvek {

// The folders of the two sides below gPostPetDir.
inline constexpr TextView kReceiveFolder = u"受信フォルダ";
inline constexpr TextView kSendFolder = u"送信フォルダ";

extern Text gIniPath;
extern std::int32_t gVer; // major * 100 + minor * 10 + revision
extern Text gPostPetDir;
extern Text gMyMailAddr;
extern Text gMyMailHandle;
extern Text gMyPetName;
extern Int16 gDisplayType; // 0 address, 1 name, 2 date, any other: filter views
extern CheckedArray<Int16, 17> gSendMailReadOption;   // 0 to 15 in the file, 0 to 3 on the screen
extern CheckedArray<Int16, 17> gRecievMailReadOption; // 0 to 15 in the file, 0 to 9 on the screen
extern Text gMailTextFont;
extern std::int32_t gMailTextFontSize;                             // points
extern Text gMailTextFontStyle;                                    // italic flag, ",", bold flag
extern Int16 gFriendTop, gFriendLeft, gFriendWidth, gFriendHeight; // twips
extern CheckedArray<Int16, 6> gFriendColWidth;                     // 1 to 5, twips

// The program's own version (App.Major, App.Minor, App.Revision on the classic
// platform).
inline constexpr int kAppMajor = 3;
inline constexpr int kAppMinor = 3;
inline constexpr int kAppRevision = 1;
Text versionText(); // "3.3.1"

// Rounds a position or size of the friend editor to 16 bits. On a very large or a
// second screen the value may lie outside that range; it is clamped.
Int16 friendTwips(double twips);

}
