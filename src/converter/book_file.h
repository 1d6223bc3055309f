// One file of a friend book, read whole.
#pragma once
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>

namespace tolvek {

struct BookFile {
    // Address books with a picture for each of hundreds of people are smaller; a
    // larger file is refused.
    static constexpr std::size_t kLargest = 32u << 20;

    std::string bytes; // without a byte order mark; UTF-16 has become UTF-8
    bool utf8 = false; // known by a byte order mark
};

// Empty for a file that is too large. Throws std::system_error.
std::optional<BookFile> readBookFile(const std::filesystem::path& path);

// Removes a byte order mark; UTF-16 becomes UTF-8.
BookFile markUndone(std::string bytes);

}
