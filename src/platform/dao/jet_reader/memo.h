// Reads a long value, which is in the row itself, in one other place, or in a chain of
// places.
//
// The library's own function for this isn't used: it never ends on a cyclic chain, and
// it cuts a text at the size of a buffer.
#pragma once
#include "platform/dao/jet_reader/jet_file.h"

#include <string>

namespace tolvek::jet {

// The complete value. Damage unless it has the length that its header announces.
std::string memoBytes(JetFile& file, std::string_view field);

}
