#include "platform/system/windows/process_windows.h"

#include "platform/system/windows/process_tree.h"
#include "platform/system/windows/system_failure.h"

#include <algorithm>

namespace tolvek {

namespace {

// A window that the user sees as one of the program's own: not a dialog of another window,
// a tool window or a window without an area.
bool isMain(HWND window)
{
    RECT area{};
    return ::IsWindowVisible(window) && !::GetWindow(window, GW_OWNER) &&
           (::GetWindowLongW(window, GWL_EXSTYLE) & WS_EX_TOOLWINDOW) == 0 &&
           ::GetWindowRect(window, &area) && area.right > area.left && area.bottom > area.top;
}

BOOL CALLBACK collect(HWND window, LPARAM list)
{
    if (isMain(window)) reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    return TRUE;
}

}

ProcessWindows::ProcessWindows(std::int32_t processId) : processes_{processId}
{
    if (processId <= 0) throwSystemError(std::errc::no_such_process, "no process");
    findOwn();
    // A starting program has no window; the program that it started has one.
    if (own_.empty()) {
        processes_ = processFamily(processId);
        findOwn();
    }
    if (own_.empty()) throwSystemError(std::errc::no_such_process, "no window of that process");
}

void ProcessWindows::findOwn()
{
    ::EnumWindows(collect, reinterpret_cast<LPARAM>(&own_));
    std::erase_if(own_, [this](HWND window) { return !isOwn(window); });
}

bool ProcessWindows::isOwn(HWND window) const
{
    DWORD process = 0;
    ::GetWindowThreadProcessId(window, &process);
    return std::ranges::find(processes_, static_cast<std::int32_t>(process)) != processes_.end();
}

HWND ProcessWindows::top() const
{
    const HWND popup = ::GetLastActivePopup(own_.front());
    return popup && ::IsWindowVisible(popup) ? popup : own_.front();
}

bool ProcessWindows::haveKeyboard() const
{
    const HWND window = ::GetForegroundWindow();
    return window && isOwn(window);
}

}
