// The windows of one process on the screen, as the window manager knows them.
#pragma once
#include "platform/system/linux/x11_screen.h"

#include <cstdint>

namespace tolvek {

class X11Windows {
public:
    // No window manager that lists windows, or no window of the process among
    // them: std::system_error.
    X11Windows(const X11Screen& screen, std::int32_t processId);

    // The topmost normal one, or failing that the topmost dialog.
    Window top() const;
    // The window that the manager shows as the active one, if it is one of these.
    Window active() const;
    // One of these has the keyboard.
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
    mutable Window lastFocus_ = None; // known to be inside
};

}
