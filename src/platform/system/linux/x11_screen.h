// A connection to the X server of its own, beside that of the window toolkit.
//
// For one operation in one thread. Errors on it end nothing: what a window that
// has gone doesn't answer is an empty answer, and a server that has gone is a
// std::system_error at the next check(). Errors on other connections go where
// they went before.
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

    // Of 32 bits each: windows, atoms or numbers; those that aren't of the type
    // (AnyPropertyType: any) count as missing.
    std::vector<unsigned long> numbers(Window window, const char* name, Atom type) const;
    unsigned long number(Window window, const char* name, Atom type) const; // 0: none
    std::string text(Window window, const char* name) const;

    // A message to the window, or about it to all who watch the root's children.
    void send(Window target, Window about, const char* type, std::vector<long> values,
              long watchers) const;

    void check() const; // throws once the server has gone

    // Until the condition holds; false when that takes too long. Looks every few
    // milliseconds, with a call of `meanwhile` between.
    bool waitFor(std::chrono::milliseconds patience, const std::function<bool()>& condition,
                 const std::function<void()>& meanwhile = {}) const;

private:
    Display* display_;
    Window root_ = 0;
};

}
