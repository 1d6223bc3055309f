// Folders for this user only: a new one in the system's folder for temporary files, and
// the one for what programs keep to be faster.
#pragma once
#include <filesystem>

namespace tolvek {

// The caller removes the folder.
std::filesystem::path makePrivateFolder();
// Needn't exist; empty if the user has none.
std::filesystem::path userCacheFolder();

}
