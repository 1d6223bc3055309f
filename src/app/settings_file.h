// TOLVEK.ini: where it is, its full read and its full write.
#pragma once
#include <cstdint>

namespace tolvek {

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
// Writes everything; the first refused key is told and ends the program.
void iniWrite(const WindowPlacement& window);
// The running version into gVer and the file; a refusal is told in the same way.
void writeVersion();

}
