#include "platform/runtime/do_events.h"
#include "platform/forms/events.h"
#include "platform/forms/input_hold.h"
#include "platform/forms/on_screen.h"

#include <QCoreApplication>

namespace tolvek {

namespace {

bool isRunning()
{
    return QCoreApplication::instance() && !QCoreApplication::closingDown() && !isQuitting();
}

void turn()
{
    QCoreApplication::processEvents(InputHold::isHeld() ? QEventLoop::ExcludeUserInputEvents
                                                        : QEventLoop::AllEvents);
    rethrowKept();
}

}

void yieldToTheScreen()
{
    setEventLoop({isRunning, turn});
}

}
