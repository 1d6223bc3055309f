// A table's definition, held against itself.
//
// The library takes a definition at its word: with one changed byte a column is
// read from where another one lies, or comes out empty in every row.
#pragma once
#include <vector>

#include <mdbtools.h>

namespace tolvek::jet {

// `mostColumns`: how many a row may have, those included that were removed.
// Damage unless the columns' numbers and places are possible side by side and
// their types are the format's.
void requireSoundColumns(const MdbTableDef& table, const std::vector<MdbColumn*>& columns,
                         unsigned mostColumns);

}
