// The number of the error that an action ends with; 0 for none.
#pragma once
#include "platform/runtime/runtime_error.h"

namespace tolvek::test {

template <class Action> int errorOf(Action action)
{
    try {
        action();
    } catch (const RuntimeError& error) {
        return error.number();
    }
    return 0;
}

}
