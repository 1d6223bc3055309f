// Renaming without replacing, for file systems that don't know it as one call.
#pragma once
#include <filesystem>

namespace tolvek {

// A second name, then the first one goes: the target can't be replaced, and at
// every moment the file has a name. Where a file can't have two names, or for a
// folder, the target is looked for before an ordinary rename.
void renameByLink(const std::filesystem::path& from, const std::filesystem::path& to);

// The last resort of the above.
void renameAfterLooking(const std::filesystem::path& from, const std::filesystem::path& to);

}
