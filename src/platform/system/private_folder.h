// Makes a new folder in the system's folder for temporary files, accessible to this
// user only.
#pragma once
#include <filesystem>

namespace tolvek {

// The caller removes the folder.
std::filesystem::path makePrivateFolder();

}
