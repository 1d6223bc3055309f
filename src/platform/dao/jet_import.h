// Converts a Jet file to a new database of this engine.
#pragma once
#include "platform/dao/dao.h"

#include <filesystem>

namespace tolvek {

// `target` must not exist. Tables that the program knows (setKnownTables) get its own
// definition; others keep the types of their columns and have no rules and no key. A
// text that is Null becomes empty if its column allows empty texts. A row that breaks
// the rules of a known table means corruption, since the original engine enforced the
// same rules. So does an incomplete set of tables: one of them, or a column, was lost.
//
// Failures as those of readJet, 3041 also for a Jet version above 4, and those of the
// disk. After a failure the caller must remove `target`.
void importJet(const std::filesystem::path& source, const std::filesystem::path& target);

// Decides by the first bytes; std::system_error if they can't be read.
bool isJetFile(const std::filesystem::path& path);

void setKnownTables(DBEngine::KnownTables known);

// DBEngine::takeSpoiltTexts. Counts only files that were imported completely.
int takeSpoiltJetTexts();

}
