// TOLVEK.ini: where it is, and how it is read and written as a whole.
#pragma once
#include <cstdint>

namespace tolvek {

// Moves an old settings file from the Windows folder to the executable's folder, if
// there is one, and sets gIniPath.
void findSettingsFile();

// The settings' view of the main window and its screen. All values are in twips.
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

// Fills every field and the window's position and size. A value that doesn't convert
// throws; the values after it stay unread. The file is then copied to TOLVEK.ini.Old,
// since the exit will overwrite it with empty fields.
void iniRead(WindowPlacement& window);
// Writes everything. The first key that can't be written is reported and ends the
// program.
void iniWrite(const WindowPlacement& window);
// Sets gVer to the running version and writes it. A failure is reported and ends the
// program.
void writeVersion();

}
