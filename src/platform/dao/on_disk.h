// Runs file operations of the system layer and turns their failures into error numbers.
#pragma once
#include "platform/runtime/runtime_error.h"

#include <system_error>

namespace tolvek {

template <class Work> auto onDisk(const Work& work)
{
    try {
        return work();
    } catch (const std::system_error& error) {
        throw fileError(error.code());
    }
}

}
