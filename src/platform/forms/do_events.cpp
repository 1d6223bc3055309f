#include "platform/runtime/do_events.h"
#include "platform/forms/events.h"
#include "platform/forms/input_hold.h"
#include "platform/forms/screen.h"

#include <QCoreApplication>

namespace tolvek {

namespace {

bool isRunning()
{
    return QCoreApplication::instance() && !QCoreApplication::closingDown() && !isQuitting();
}

void turn()
{
    // Excluded input stays in the window system's queue.
    QCoreApplication::processEvents(InputHold::isHeld() ? QEventLoop::ExcludeUserInputEvents
                                                        : QEventLoop::AllEvents);
    // An exception that an event has kept leaves at the yield.
    rethrowKept();
}

}

void yieldToTheScreen()
{
    setEventLoop({isRunning, turn});
}

}
