// The windows of one process, as reported by the window manager.
#pragma once
#include "platform/system/linux/x11_screen.h"

#include <cstdint>

namespace tolvek {

class X11Windows {
public:
    // Throws std::system_error if no window manager lists windows, or if none of
    // the windows belongs to the process.
    X11Windows(const X11Screen& screen, std::int32_t processId);

    // The topmost normal window, otherwise the topmost dialog.
    Window top() const;
    // The window that the manager reports as active, if it is one of these windows.
    Window active() const;
    // True if one of these windows has the keyboard focus.
    bool haveKeyboard() const;

private:
    bool isLocal(Window window) const;
    std::int32_t processOf(Window window) const;
    bool isOwn(Window window) const;
    bool isInside(Window window) const;
    bool hasType(Window window, const char* type) const;
    Window topOf(const char* type) const;
    void findOwn();

    const X11Screen& screen_;
    std::vector<std::int32_t> processes_;
    std::vector<Window> own_;         // bottom to top
    mutable Window lastFocus_ = None; // cached: known to be inside one of the windows
};

}
