#include "platform/dao/jet_reader/memo.h"

#include "platform/dao/jet_reader/damage.h"

#include <cstring>

namespace tolvek::jet {

namespace {

constexpr std::size_t kHead = 12; // length and flags, first place, unused
constexpr std::size_t kLink = 4;  // before each part: the place of the next one
constexpr std::uint32_t kInline = 0x80000000, kOnePlace = 0x40000000, kLength = 0x3FFFFFFF;
constexpr int kOffset = 0x1FFF;
constexpr char kLongValues[] = "LVAL";

std::uint32_t wordAt(std::string_view bytes, std::size_t position)
{
    std::uint32_t word = 0;
    for (std::size_t i = 4; i > 0; --i)
        word = word << 8 | static_cast<unsigned char>(bytes[position + i - 1]);
    return word;
}

// The bytes are valid until the next call.
std::string_view placeBytes(MdbHandle& handle, std::uint32_t place)
{
    void* page = nullptr;
    int start = 0;
    std::size_t size = 0;
    require(mdb_find_pg_row(&handle, static_cast<int>(place), &page, &start, &size) == 0,
            "place of a long value");
    const auto* bytes = static_cast<const char*>(page);
    require(bytes[0] == MDB_PAGE_DATA && std::memcmp(bytes + 4, kLongValues, 4) == 0,
            "page of long values");
    const auto from = static_cast<std::size_t>(start & kOffset);
    require(from + size <= static_cast<std::size_t>(handle.fmt->pg_size), "end of a long value");
    return {bytes + from, size};
}

// Every part has at least one byte, so a cyclic chain soon exceeds the announced length.
std::string chained(MdbHandle& handle, std::uint32_t place, std::uint32_t size)
{
    std::string whole;
    while (place != 0) {
        const std::string_view part = placeBytes(handle, place);
        require(part.size() > kLink, "part of a long value");
        place = wordAt(part, 0);
        whole += part.substr(kLink);
        require(whole.size() <= size, "length of a long value");
    }
    return whole;
}

// The upper two bits of the length say where the value is.
std::string gathered(JetFile& file, std::string_view field)
{
    const std::uint32_t head = wordAt(field, 0), place = wordAt(field, 4);
    const std::uint32_t size = head & kLength;
    require(size <= file.size(), "length of a long value"); // before anything is collected
    if (head & kInline) return std::string(field.substr(kHead));
    if (head & kOnePlace) return std::string(placeBytes(file.handle(), place));
    return chained(file.handle(), place, size);
}

}

std::string memoBytes(JetFile& file, std::string_view field)
{
    if (field.size() < kHead) return {}; // an empty text has no header
    std::string bytes = gathered(file, field);
    require(bytes.size() == (wordAt(field, 0) & kLength), "length of a long value");
    return bytes;
}

}
