#include "platform/forms/do_events.h"
#include "platform/forms/events.h"

#include <QCoreApplication>

#include <chrono>

namespace tolvek {

namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::milliseconds kTurnEvery{5};
Clock::time_point lastTurn{};

bool isRunning()
{
    return QCoreApplication::instance() && !QCoreApplication::closingDown() && !isQuitting();
}

}

void DoEventsNow()
{
    if (!isRunning()) return;
    QCoreApplication::processEvents();
    // Counted from the turn's end, or a slow turn would be followed by another.
    lastTurn = Clock::now();
    rethrowKept();
}

void DoEvents()
{
    if (Clock::now() - lastTurn >= kTurnEvery) DoEventsNow();
}

}
