#include "platform/system/linux/x11_windows.h"

#include "platform/system/linux/process_folder.h"

#include <X11/Xatom.h>
#include <unistd.h>

#include <algorithm>
#include <iterator>
#include <limits.h>
#include <system_error>

namespace tolvek {

namespace {

void requireManager(const X11Screen& screen)
{
    constexpr const char* mark = "_NET_SUPPORTING_WM_CHECK";
    const Window manager = screen.number(screen.root(), mark, XA_WINDOW);
    // A window manager that has exited leaves its mark on the root window, but its
    // own window is gone.
    if (!manager || screen.number(manager, mark, XA_WINDOW) != manager)
        throwDesktopError(std::errc::function_not_supported, "no window manager");
}

std::string hostName()
{
    char name[HOST_NAME_MAX + 1] = {};
    gethostname(name, HOST_NAME_MAX);
    return name;
}

Window parentOf(const X11Screen& screen, Window window)
{
    Window root = None;
    Window parent = None;
    Window* children = nullptr;
    unsigned int count = 0;
    if (!XQueryTree(screen.display(), window, &root, &parent, &children, &count)) return None;
    if (children) XFree(children);
    return parent;
}

}

X11Windows::X11Windows(const X11Screen& screen, std::int32_t processId)
    : screen_(screen), processes_{processId}
{
    requireManager(screen);
    if (processId <= 0) throwDesktopError(std::errc::no_such_process, "no process");
    findOwn();
    // A start script or a loader has no window; the program that it started has
    // one.
    if (own_.empty()) {
        processes_ = processFamily(processId, "/proc");
        findOwn();
    }
    screen.check();
    if (own_.empty()) throwDesktopError(std::errc::no_such_process, "no window of that process");
}

void X11Windows::findOwn()
{
    const auto all = screen_.numbers(screen_.root(), "_NET_CLIENT_LIST_STACKING", XA_WINDOW);
    std::ranges::copy_if(all, std::back_inserter(own_),
                         [this](Window window) { return isOwn(window); });
}

// A window of another machine may have the same process id.
bool X11Windows::isLocal(Window window) const
{
    const std::string machine = screen_.text(window, "WM_CLIENT_MACHINE");
    return machine.empty() || machine == hostName();
}

std::int32_t X11Windows::processOf(Window window) const
{
    return static_cast<std::int32_t>(screen_.number(window, "_NET_WM_PID", XA_CARDINAL));
}

bool X11Windows::isOwn(Window window) const
{
    return std::ranges::find(processes_, processOf(window)) != processes_.end() && isLocal(window);
}

// The focus is often on a small child window of the window that carries the process
// id.
bool X11Windows::isInside(Window window) const
{
    while (window != None && window != screen_.root()) {
        if (processOf(window) != 0) return isOwn(window);
        window = parentOf(screen_, window);
    }
    return false;
}

bool X11Windows::hasType(Window window, const char* type) const
{
    const auto types = screen_.numbers(window, "_NET_WM_WINDOW_TYPE", XA_ATOM);
    const Atom normal = screen_.atom("_NET_WM_WINDOW_TYPE_NORMAL");
    // A window without a type is a normal one.
    if (types.empty()) return screen_.atom(type) == normal;
    return std::ranges::find(types, screen_.atom(type)) != types.end();
}

Window X11Windows::topOf(const char* type) const
{
    const auto found = std::find_if(own_.rbegin(), own_.rend(),
                                    [&](Window window) { return hasType(window, type); });
    return found == own_.rend() ? None : *found;
}

Window X11Windows::top() const
{
    for (const char* type : {"_NET_WM_WINDOW_TYPE_NORMAL", "_NET_WM_WINDOW_TYPE_DIALOG"})
        if (const Window found = topOf(type)) return found;
    throwDesktopError(std::errc::no_such_process, "no usable window of that process");
}

Window X11Windows::active() const
{
    const Window window = screen_.number(screen_.root(), "_NET_ACTIVE_WINDOW", XA_WINDOW);
    return window != None && isOwn(window) ? window : None;
}

bool X11Windows::haveKeyboard() const
{
    Window focus = None;
    int revert = 0;
    XGetInputFocus(screen_.display(), &focus, &revert);
    // The focus follows the pointer, so no window is certain to have it.
    if (focus == PointerRoot) return false;
    // Called for each key, so the parents are only searched when the focus has
    // changed.
    if (focus != lastFocus_) lastFocus_ = isInside(focus) ? focus : None;
    return lastFocus_ != None;
}

}
