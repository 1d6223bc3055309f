// The one look-up of a correspondent whose line gave no name.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

// The name that the friend book has for the address; a friend without a name
// goes by the pet's name. Not in the book: the name stays as it was. Reports
// its own failures.
void setName(const Text& address, Text& name);

}
