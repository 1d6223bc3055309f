// Selects the file operations that count when a test cuts off the editor at its own
// files.
#pragma once
#include <filesystem>

namespace tolvek::test {

// True for Friend.Tmp and its copies.
inline bool isFriendFile(const std::filesystem::path& path)
{
    return path.filename().string().starts_with("Friend.");
}

}
