// Whose operations count where a test ends the editor's road at its files alone.
#pragma once
#include <filesystem>

namespace tolvek::test {

// Friend.Tmp and the copies of it.
inline bool isFriendFile(const std::filesystem::path& path)
{
    return path.filename().string().starts_with("Friend.");
}

}
