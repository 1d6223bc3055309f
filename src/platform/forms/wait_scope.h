// Marks that the program waits for its user in a message loop of its own;
// `leave` ends that loop when an event has kept an exception. The innermost one
// is asked. Input that is held back outside reaches this loop.
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

private:
    InputHold::Suspension input_;
};

}
