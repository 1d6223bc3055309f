// Renames without replacing, on file systems that don't support this in one call.
#pragma once
#include <filesystem>

namespace tolvek {

// Links the file to the new name and then removes the old name, so the target can't
// be replaced and the file always has a name. If the file can't have two names, or
// for a folder, falls back to renameAfterLooking.
void renameByLink(const std::filesystem::path& from, const std::filesystem::path& to);

// Checks that the target is free and then renames. Not atomic, therefore the last
// resort.
void renameAfterLooking(const std::filesystem::path& from, const std::filesystem::path& to);

}
