// Finds the name of a correspondent whose header line gave none.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

// Sets `name` to the friend book's name for the address, or to the pet's name if the
// friend has none. If the address isn't in the book, `name` stays unchanged. Reports
// its own failures.
void setName(const Text& address, Text& name);

}
