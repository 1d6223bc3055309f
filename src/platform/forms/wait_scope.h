// Marks that the program waits in a message loop of its own; `leave` ends that
// loop when an event has kept an exception. The innermost one is asked.
#pragma once
#include <functional>

namespace tolvek {

class WaitScope {
public:
    explicit WaitScope(std::function<void()> leave);
    ~WaitScope();
    WaitScope(const WaitScope&) = delete;
    WaitScope& operator=(const WaitScope&) = delete;
};

}
