#include "platform/forms/events.h"

#include "platform/forms/appearance.h"
#include "platform/forms/screen.h"
#include "platform/forms/test_hooks.h"
#include "platform/runtime/msg_box.h"

#include <QApplication>

#include <cstdlib>
#include <exception>
#include <vector>

namespace tolvek {

namespace {

std::function<void(const RuntimeError&)> untrappedHandler;
std::function<void()> endFunction;
std::exception_ptr kept;
bool quitting = false;
// Innermost last.
std::vector<std::function<void()>> waits;

void endProcess()
{
    if (endFunction)
        endFunction();
    else
        // No destructors or exit handlers: this may run deep inside nested events.
        std::_Exit(0);
}

void showUntrapped(const RuntimeError& error)
{
    MsgBox(u"実行時エラー '" + decimal(error.number()) + u"':\r\n\r\n" + error.description(),
           MsgButtons::Ok, kApplicationTitle, MsgIcon::Critical);
    endProcess();
}

// The first exception causes all later ones, so it is the one to keep.
void keep(std::exception_ptr exception) noexcept
{
    if (!kept) kept = std::move(exception);
    // Ends the innermost event loop, whose caller rethrows the exception.
    if (!waits.empty()) waits.back()();
}

}

WaitScope::WaitScope(std::function<void()> leave)
{
    waits.push_back(std::move(leave));
}

WaitScope::~WaitScope()
{
    waits.pop_back();
}

void hooks::setUntrapped(std::function<void(const RuntimeError&)> handler)
{
    untrappedHandler = std::move(handler);
}

void setEndFunction(std::function<void()> end)
{
    endFunction = std::move(end);
}

void reportUntrapped(const RuntimeError& error)
{
    if (untrappedHandler)
        untrappedHandler(error);
    else
        showUntrapped(error);
}

void runEvent(const std::function<void()>& procedure) noexcept
{
    try {
        try {
            procedure();
            // Inside the outer try: the handler itself may throw, for example the end
            // of the program.
        } catch (const RuntimeError& error) {
            reportUntrapped(error);
        }
    } catch (...) {
        keep(std::current_exception());
    }
}

bool hasKept()
{
    return static_cast<bool>(kept);
}

void rethrowKept()
{
    if (kept) std::rethrow_exception(std::exchange(kept, nullptr));
}

void prepareApplication()
{
    QApplication::setQuitOnLastWindowClosed(false);
    setAppearance();
}

bool isQuitting()
{
    return quitting;
}

int runApplication()
{
    const auto watch =
        QObject::connect(qApp, &QCoreApplication::aboutToQuit, [] { quitting = true; });
    const WaitScope wait([] { QCoreApplication::exit(1); });
    const int code = QApplication::exec();
    QObject::disconnect(watch);
    // So that the loop can be run again.
    quitting = false;
    rethrowKept();
    return code;
}

}
