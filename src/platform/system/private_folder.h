// A new folder among the system's temporary files, open to this user alone.
#pragma once
#include <filesystem>

namespace tolvek {

// The caller removes it.
std::filesystem::path makePrivateFolder();

}
