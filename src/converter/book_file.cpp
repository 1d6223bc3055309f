#include "converter/book_file.h"

#include "platform/runtime/text.h"
#include "platform/system/files.h"

#include <vector>

namespace tolvek {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kLittleMark = "\xFF\xFE";
constexpr std::string_view kBigMark = "\xFE\xFF";

// An odd byte at the end is dropped. `low` is the index of the low byte in each pair.
std::string utf8OfUnits(std::string_view bytes, std::size_t low)
{
    Text text;
    text.reserve(bytes.size() / 2);
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        const auto lower = static_cast<unsigned char>(bytes[at + low]);
        const auto upper = static_cast<unsigned char>(bytes[at + 1 - low]);
        text += static_cast<char16_t>(upper << 8 | lower);
    }
    return toUtf8(text);
}

}

std::optional<BookFile> readBookFile(const std::filesystem::path& path)
{
    OpenFile file(path, OpenFile::Mode::Read);
    std::vector<char> piece(1 << 16);
    std::string bytes;
    while (const std::size_t size = file.read(piece.data(), piece.size())) {
        // Checked while reading, as the file may still grow.
        if (bytes.size() + size > BookFile::kLargest) return std::nullopt;
        bytes.append(piece.data(), size);
    }
    return markUndone(std::move(bytes));
}

BookFile markUndone(std::string bytes)
{
    if (bytes.starts_with(kUtf8Mark)) return {bytes.substr(kUtf8Mark.size()), true};
    const bool big = bytes.starts_with(kBigMark);
    if (!big && !bytes.starts_with(kLittleMark)) return {std::move(bytes), false};
    const auto units = std::string_view(bytes).substr(kLittleMark.size());
    // Converted, so that the readers of books handle bytes only.
    return {utf8OfUnits(units, big ? 1 : 0), true};
}

}
