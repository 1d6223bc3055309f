// Starts the system's information tool from the location in the registry.
#pragma once
#include "platform/runtime/text.h"

#include <cstdint>

namespace tolvek {

// Tries two registry entries in turn. Every failure, from a missing value to a tool
// that can't be started, has the same answer: a box.
void StartSysInfo();

// True when a value was found; otherwise the result is empty. A text is returned
// unchanged, a 32-bit number as its digits. A value of another type leaves the result
// unchanged.
bool GetKeyValue(std::uint32_t root, const Text& keyName, const Text& valueName, Text& result);

}
