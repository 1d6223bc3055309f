// Runs the program's code for events of the screen and handles exceptions from it.
//
// No exception ever passes through Qt. A RuntimeError that leaves an event
// procedure is untrapped and goes to reportUntrapped. Any other exception
// (the end of the program, as a test's hook throws it) is kept. It ends the
// innermost wait (ShowModal, MsgBox, InputBox, DoEvents, runApplication) or the
// Load, Show or Unload that fired the event, and is rethrown from there. A test
// that clicked a control itself calls rethrowKept().
#pragma once
#include "platform/forms/input_hold.h"
#include "platform/runtime/runtime_error.h"

#include <QObject>

#include <functional>
#include <utility>

namespace tolvek {

// Shows the box 実行時エラー '13': and then calls the end function.
void reportUntrapped(const RuntimeError& error);

// Ends the program at once. Without an end function the process exits with code 0.
void setEndFunction(std::function<void()> end);

// Runs an event procedure under the rule above.
void runEvent(const std::function<void()>& procedure) noexcept;

// Rethrows the exception that an event kept, if any, and forgets it.
void rethrowKept();
bool hasKept();

// prepareApplication is called once before the first window: closing the last
// window then doesn't end the program, and the program has its appearance
// (platform/forms/appearance.h).
// runApplication runs the event loop.
void prepareApplication();
int runApplication();
bool isQuitting(); // the event loop has ended and its callers are returning

// Connects an event to a procedure:
// onEvent(comEnd, &CommandButton::Click, [this] { ... });
template <class Sender, class Signal, class Slot>
QMetaObject::Connection onEvent(Sender* sender, Signal signal, Slot slot)
{
    return QObject::connect(sender, signal, sender, [slot = std::move(slot)](auto... args) mutable {
        runEvent([&] { slot(args...); });
    });
}

// Marks that the program waits for its user in an event loop of its own. When an
// event has kept an exception, `leave` of the innermost scope is called to end that
// loop. Input that is held outside is delivered in this loop.
class WaitScope {
public:
    explicit WaitScope(std::function<void()> leave);
    ~WaitScope();
    WaitScope(const WaitScope&) = delete;
    WaitScope& operator=(const WaitScope&) = delete;
    // The loop is about to end (InputHold::Suspension).
    void end() { input_.end(); }

private:
    InputHold::Suspension input_;
};

}
