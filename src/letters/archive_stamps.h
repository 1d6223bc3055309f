// The state of archive files: whether they have to be read again, and how large they are.
#pragma once
#include "platform/system/files.h"

#include <filesystem>
#include <vector>

namespace tolvek {

// Of a file and its log; empty for a file that isn't there.
using Stamps = std::vector<FileStamp>;
Stamps stampsOf(const std::filesystem::path& path);

// Archives of more than this many bytes altogether keep their letters in mapped cache
// files (about 100,000 letters).
inline constexpr std::uint64_t kMostInMemory = 256ull << 20;
bool isLarge(const std::vector<Stamps>& files, std::uint64_t mostInMemory);

// Where these are; empty if the user has no folder for such files.
std::filesystem::path letterCacheFolder();

}
