#include "platform/runtime/do_events.h"

#include "platform/runtime/test_hooks.h"

#include <chrono>
#include <utility>

namespace tolvek {

namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::milliseconds kTurnEvery{5};

// constinit: forms installs its loop during static initialisation, in any order.
constinit EventLoop eventLoop{[] { return true; }, [] {}};
constinit Clock::time_point lastTurn{};

std::function<void()>& yieldHook()
{
    static std::function<void()> hook;
    return hook;
}

// Counted from the end of the turn, otherwise a slow turn would be followed by
// another one at once.
struct TurnEnd {
    ~TurnEnd() { lastTurn = Clock::now(); }
};

}

void setEventLoop(const EventLoop& loop)
{
    eventLoop = loop;
}

void DoEventsNow()
{
    if (!eventLoop.isRunning()) return;
    if (const auto hook = yieldHook()) hook(); // a copy, because the hook may remove itself
    const TurnEnd end;
    eventLoop.turn();
}

void DoEvents()
{
    if (yieldHook() || Clock::now() - lastTurn >= kTurnEvery) DoEventsNow();
}

void hooks::setYield(std::function<void()> hook)
{
    yieldHook() = std::move(hook);
}

}
