// From a Jet file to a new database of this engine.
#pragma once
#include "platform/dao/dao.h"

#include <filesystem>

namespace tolvek {

// `target` must not be there. Tables that the program knows (setKnownTables) come
// out as it makes them; others with their columns' types and no rule and no key.
// A text that is Null becomes an empty one, unless its column takes none. Rows
// that break a known table's rules are damage: their engine kept the same ones.
// So are tables that can't be all: one of them, or a column, was lost.
//
// Failures as readJet's, 3041 also for a newer Jet than 4, and those of the disk;
// what stands at `target` then is for the caller to remove.
void importJet(const std::filesystem::path& source, const std::filesystem::path& target);

// By its first bytes; std::system_error where they can't be read.
bool isJetFile(const std::filesystem::path& path);

void setKnownTables(DBEngine::KnownTables known);

// Of all files that were read whole since it was last asked.
int takeSpoiltJetTexts();

}
