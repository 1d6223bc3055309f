#include "letters/find_text.h"

#include <cstdint>

namespace tolvek {

namespace {

constexpr std::size_t kAtOnce = 32;

// Whether any of the places may begin the word. Written so that the compiler makes vector
// instructions of it: a fixed count and no exit in between.
bool mayBegin(const char16_t* first, const char16_t* last, char16_t begin, char16_t end)
{
    std::uint16_t any = 0;
    for (std::size_t at = 0; at < kAtOnce; ++at) {
        const std::uint16_t isBegin = first[at] == begin ? 0xFFFF : 0;
        const std::uint16_t isEnd = last[at] == end ? 0xFFFF : 0;
        any = static_cast<std::uint16_t>(any | (isBegin & isEnd));
    }
    return any != 0;
}

}

std::size_t findText(TextView text, TextView word, std::size_t from)
{
    if (word.empty() || from > text.size() || text.size() - from < word.size())
        return TextView::npos;
    const std::size_t places = text.size() - word.size() + 1;
    const char16_t* const data = text.data();
    const std::size_t last = word.size() - 1;
    std::size_t at = from;
    while (at < places) {
        const bool whole = places - at >= kAtOnce;
        const std::size_t end = whole ? at + kAtOnce : places;
        if (whole && !mayBegin(data + at, data + at + last, word.front(), word.back())) {
            at = end;
            continue;
        }
        for (; at < end; ++at)
            if (data[at] == word.front() && text.substr(at, word.size()) == word) return at;
    }
    return TextView::npos;
}

}
