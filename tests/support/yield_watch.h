// Counts the yields during its lifetime, and calls `look` at each.
//
//     YieldWatch yields([] { EXPECT_EQ(gBusyFlag, -1); });
//     edSearch_Name();
//     EXPECT_EQ(yields.count(), 5);
//
// An exception thrown by `look` is a failure of that yield.
#pragma once
#include "platform/runtime/test_hooks.h"

#include <functional>

namespace tolvek::test {

class YieldWatch {
public:
    explicit YieldWatch(std::function<void()> look = {})
    {
        hooks::setYield([this, look = std::move(look)] {
            ++count_;
            if (look) look();
        });
    }
    ~YieldWatch() { hooks::setYield({}); }
    YieldWatch(const YieldWatch&) = delete;
    YieldWatch& operator=(const YieldWatch&) = delete;

    int count() const { return count_; }

private:
    int count_ = 0;
};

// The number of yields that a routine makes.
template <class Routine> int yieldsOf(Routine routine)
{
    const YieldWatch yields;
    routine();
    return yields.count();
}

}
