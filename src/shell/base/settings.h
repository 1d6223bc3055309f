// All that the program remembers outside its database: plain fields, filled by
// iniRead when the main window starts and written back by iniWrite when it
// unloads. In between the fields alone are the truth.
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

#include <cstdint>

namespace tolvek {

class frmTolvek;

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

// The program's own version: App.Major, App.Minor, App.Revision.
inline constexpr int kAppMajor = 3;
inline constexpr int kAppMinor = 3;
inline constexpr int kAppRevision = 1;
Text versionText(); // "3.3.1"

// Looks for an old settings file in the Windows folder, moves it beside the
// executable, and sets gIniPath.
void findSettingsFile();

// What the settings know of the main window and its screen, all in twips.
class WindowPlacement {
public:
    virtual ~WindowPlacement() = default;
    virtual std::int32_t Top() const = 0;
    virtual std::int32_t Left() const = 0;
    virtual std::int32_t Width() const = 0;
    virtual std::int32_t Height() const = 0;
    virtual void setTop(std::int32_t twips) = 0;
    virtual void setLeft(std::int32_t twips) = 0;
    virtual void setWidth(std::int32_t twips) = 0;
    virtual void setHeight(std::int32_t twips) = 0;
    virtual int WindowState() const = 0; // 1: minimised
    virtual std::int32_t ScreenWidth() const = 0;
    virtual std::int32_t ScreenHeight() const = 0;
};

// Fills every field and the window's position and size. A value that doesn't
// convert goes up to the caller; what stands behind it stays unread. The file
// is then kept as TOLVEK.ini.Old, since the exit writes empty fields over it.
void iniRead(WindowPlacement& window);
void iniRead(frmTolvek& form);
// Writes everything; the first refused key is told and ends the program.
void iniWrite(const WindowPlacement& window);
void iniWrite(frmTolvek& form);
// The running version into gVer and the file; a refusal is told in the same way.
void writeVersion();

// A measure of the friend editor as its fields hold it: on a very large or a
// second screen it may lie beyond 16 bits and stops at their end.
Int16 friendTwips(double twips);

}
