#include "platform/system/linux/x11_screen.h"

#include <X11/Xutil.h>

#include <algorithm>
#include <system_error>
#include <thread>
#include <utility>

namespace tolvek {

namespace {

using Clock = std::chrono::steady_clock;

constexpr long kLongestProperty = 1 << 16; // in units of 32 bits
constexpr std::chrono::milliseconds kLookEvery{2};

// The error handlers belong to the process, and the toolkit has its own. Ours are
// installed only while a connection of this class is open.
Display* ownDisplay = nullptr;
bool serverHasGone = false;
XErrorHandler errorsBefore = nullptr;
XIOErrorHandler lossesBefore = nullptr;

// Errors of our connection are ignored; others go to the previous handler.
int onError(Display* display, XErrorEvent* error)
{
    return display == ownDisplay || !errorsBefore ? 0 : errorsBefore(display, error);
}

int onLoss(Display* display)
{
    return display == ownDisplay || !lossesBefore ? 0 : lossesBefore(display);
}

// Called when the server is lost; the next check() throws.
void stayAlive(Display*, void*)
{
    serverHasGone = true;
}

}

void throwDesktopError(std::errc code, const char* what)
{
    throw std::system_error(std::make_error_code(code), what);
}

X11Screen::X11Screen() : display_(XOpenDisplay(nullptr))
{
    if (!display_) throwDesktopError(std::errc::no_such_device_or_address, "no screen");
    ownDisplay = display_;
    serverHasGone = false;
    errorsBefore = XSetErrorHandler(onError);
    lossesBefore = XSetIOErrorHandler(onLoss);
    // The default exit handler would end the process when the server is lost.
    XSetIOErrorExitHandler(display_, stayAlive, nullptr);
    root_ = DefaultRootWindow(display_);
}

X11Screen::~X11Screen()
{
    // Before the handlers are restored: closing may still report errors.
    XCloseDisplay(display_);
    XSetErrorHandler(errorsBefore);
    XSetIOErrorHandler(lossesBefore);
    ownDisplay = nullptr;
}

Atom X11Screen::atom(const char* name) const
{
    return XInternAtom(display_, name, False);
}

std::vector<unsigned long> X11Screen::numbers(Window window, const char* name, Atom type) const
{
    Atom found = 0;
    int bits = 0;
    unsigned long count = 0;
    unsigned long left = 0;
    unsigned char* bytes = nullptr;
    const int failure = XGetWindowProperty(display_, window, atom(name), 0, kLongestProperty, False,
                                           type, &found, &bits, &count, &left, &bytes);
    std::vector<unsigned long> values;
    if (failure == Success && bytes && bits == 32) {
        // Xlib returns 32-bit elements as longs, even where a long has 64 bits.
        const auto* first = reinterpret_cast<const unsigned long*>(bytes);
        values.assign(first, first + count);
    }
    if (bytes) XFree(bytes);
    return values;
}

unsigned long X11Screen::number(Window window, const char* name, Atom type) const
{
    const std::vector<unsigned long> all = numbers(window, name, type);
    return all.empty() ? 0 : all.front();
}

std::string X11Screen::text(Window window, const char* name) const
{
    XTextProperty property{};
    if (!XGetTextProperty(display_, window, &property, atom(name)) || !property.value) return {};
    std::string bytes(reinterpret_cast<const char*>(property.value), property.nitems);
    XFree(property.value);
    return bytes;
}

void X11Screen::send(Window target, Window about, const char* type, std::vector<long> values,
                     long watchers) const
{
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = about;
    event.xclient.message_type = atom(type);
    event.xclient.format = 32;
    std::ranges::copy(values, event.xclient.data.l);
    XSendEvent(display_, target, False, watchers, &event);
    XFlush(display_);
}

void X11Screen::check() const
{
    if (serverHasGone) throwDesktopError(std::errc::connection_reset, "the screen has gone");
}

bool X11Screen::waitFor(std::chrono::milliseconds patience, const std::function<bool()>& condition,
                        const std::function<void()>& meanwhile) const
{
    const Clock::time_point end = Clock::now() + patience;
    for (;;) {
        // The condition's requests may reveal a lost server, so check() comes after
        // it.
        const bool holds = condition();
        check();
        if (holds || Clock::now() >= end) return holds;
        if (meanwhile) meanwhile();
        std::this_thread::sleep_for(kLookEvery);
    }
}

}
