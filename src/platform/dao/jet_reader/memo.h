// A long value: in the row itself, in one other place, or in a chain of places.
//
// The chain is followed here: the library's own walk goes round for ever in a
// damaged one, and cuts a text at the size of a buffer.
#pragma once
#include "platform/dao/jet_reader/jet_file.h"

#include <string>

namespace tolvek::jet {

// Whole, as its head announces it, or Damage.
std::string memoBytes(JetFile& file, std::string_view field);

}
