// Starts the system's information tool, where the registry says that it is.
#pragma once
#include "platform/runtime/text.h"

#include <cstdint>

namespace tolvek {

// Two places of the registry are looked at in turn. Whatever goes wrong, from a
// missing value to a tool that can't be run, has one answer: a box that says so.
void StartSysInfo();

// True when a value was found; else the result is empty. A text comes as it is,
// a 32-bit number as its digits; a value of another kind leaves the result as
// it was.
bool GetKeyValue(std::uint32_t root, const Text& keyName, const Text& valueName, Text& result);

}
