// What a file keeps when its contents are exchanged: the link that leads to it,
// and its mode.
#pragma once
#include <filesystem>

namespace tolvek {

// The file that a link leads to; `path` itself when it is none, or leads nowhere.
std::filesystem::path linkTarget(const std::filesystem::path& path);

void copyMode(const std::filesystem::path& from, const std::filesystem::path& to);

}
