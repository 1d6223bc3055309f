// A connection to the X server, separate from that of the window toolkit.
//
// For one operation in one thread. Errors on this connection don't end the program:
// a request to a window that no longer exists gives an empty answer, and a lost
// server throws std::system_error at the next check(). Errors on other connections
// go to the previous handlers.
#pragma once
#include <X11/Xlib.h>

#include <chrono>
#include <functional>
#include <string>
#include <vector>

namespace tolvek {

[[noreturn]] void throwDesktopError(std::errc code, const char* what);

class X11Screen {
public:
    X11Screen();
    ~X11Screen();
    X11Screen(const X11Screen&) = delete;
    X11Screen& operator=(const X11Screen&) = delete;

    Display* display() const { return display_; }
    Window root() const { return root_; }
    Atom atom(const char* name) const;

    // A property with 32-bit elements: windows, atoms or numbers. A property of
    // another type counts as missing (AnyPropertyType accepts all).
    std::vector<unsigned long> numbers(Window window, const char* name, Atom type) const;
    unsigned long number(Window window, const char* name, Atom type) const; // 0 if missing
    std::string text(Window window, const char* name) const;

    // Sends a message to the window `target`, or about the window `about` to all
    // clients that watch the children of the root window.
    void send(Window target, Window about, const char* type, std::vector<long> values,
              long watchers) const;

    void check() const; // throws if the server is gone

    // Waits until the condition holds; returns false after `patience`. Checks every
    // few milliseconds and calls `meanwhile` in between.
    bool waitFor(std::chrono::milliseconds patience, const std::function<bool()>& condition,
                 const std::function<void()>& meanwhile = {}) const;

private:
    Display* display_;
    Window root_ = 0;
};

}
