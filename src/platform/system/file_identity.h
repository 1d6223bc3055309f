// What a file keeps when its contents are replaced: the link that leads to it, and
// its mode.
#pragma once
#include <filesystem>

namespace tolvek {

// The target of a link. Returns `path` itself if it isn't a link or its target is
// missing.
std::filesystem::path linkTarget(const std::filesystem::path& path);

void copyMode(const std::filesystem::path& from, const std::filesystem::path& to);

}
