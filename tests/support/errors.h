// The number of the RuntimeError that an action ends with; 0 if it doesn't fail.
#pragma once
#include "platform/runtime/runtime_error.h"

namespace tolvek::test {

template <class Action> int errorOf(const Action& action)
{
    try {
        action();
    } catch (const RuntimeError& error) {
        return error.number();
    }
    return 0;
}

}
