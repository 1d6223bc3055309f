#include "platform/forms/do_events.h"
#include "platform/forms/events.h"
#include "platform/forms/input_hold.h"
#include "platform/forms/yield_hook.h"

#include <QCoreApplication>

#include <chrono>

namespace tolvek {

namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::milliseconds kTurnEvery{5};
Clock::time_point lastTurn{};
std::function<void()> yieldHook;

bool isRunning()
{
    return QCoreApplication::instance() && !QCoreApplication::closingDown() && !isQuitting();
}

}

void DoEventsNow()
{
    if (!isRunning()) return;
    if (const auto hook = yieldHook) hook(); // which may take itself away
    QCoreApplication::processEvents(InputHold::isHeld() ? QEventLoop::ExcludeUserInputEvents
                                                        : QEventLoop::AllEvents);
    // Counted from the turn's end, or a slow turn would be followed by another.
    lastTurn = Clock::now();
    rethrowKept();
}

void DoEvents()
{
    if (yieldHook || Clock::now() - lastTurn >= kTurnEvery) DoEventsNow();
}

void setYieldHook(std::function<void()> hook)
{
    yieldHook = std::move(hook);
}

}
