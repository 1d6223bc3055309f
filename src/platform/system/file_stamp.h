// Identifies a file and its last change.
#pragma once
#include <cstdint>
#include <filesystem>

namespace tolvek {

// Equal stamps mean that nobody has written to the file or replaced it.
struct FileStamp {
    std::uint64_t device = 0, file = 0, size = 0;
    std::int64_t changed = 0; // nanoseconds, as fine as the file system records them
    bool operator==(const FileStamp&) const = default;
};

// Throws as described in files.h.
FileStamp fileStamp(const std::filesystem::path& path);

}
