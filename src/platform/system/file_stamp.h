// What a file is and when it last changed.
#pragma once
#include <cstdint>
#include <filesystem>

namespace tolvek {

// The same as long as nobody has written the file or put another in its place.
struct FileStamp {
    std::uint64_t device = 0, file = 0, size = 0;
    std::int64_t changed = 0; // in the finest steps that the file system has
    bool operator==(const FileStamp&) const = default;
};

// Failures as in files.h.
FileStamp fileStamp(const std::filesystem::path& path);

}
