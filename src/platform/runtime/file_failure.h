// Converts the failure of a file operation to an error number of the classic
// platform.
#pragma once
#include "platform/runtime/runtime_error.h"

#include <system_error>

namespace tolvek {

template <class Action> auto asFileError(Action action)
{
    try {
        return action();
    } catch (const std::system_error& error) {
        throw fileError(error.code());
    }
}

}
