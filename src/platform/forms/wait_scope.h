// Marks that the program waits for its user in an event loop of its own. When an
// event has kept an exception, `leave` of the innermost scope is called to end that
// loop. Input that is held outside is delivered in this loop.
#pragma once
#include "platform/forms/input_hold.h"

#include <functional>

namespace tolvek {

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
