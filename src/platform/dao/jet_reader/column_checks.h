// Checks a table's definition for consistency.
//
// The library doesn't check it. One changed byte would make it read a column from the
// place of another, or return it empty in every row.
#pragma once
#include <vector>

#include <mdbtools.h>

namespace tolvek::jet {

// `mostColumns`: the number of columns that a row may have, including removed ones.
// Throws Damage unless the numbers and places of the columns fit together and their
// types exist in the format.
void requireSoundColumns(const MdbTableDef& table, const std::vector<MdbColumn*>& columns,
                         unsigned mostColumns);

}
