#include "converter/ascii.h"

#include <algorithm>

namespace tolvek {

namespace {

// std::tolower would follow the process's locale.
char lowerOf(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

template <class View> View trimmed(View text)
{
    while (!text.empty() && isAsciiSpace(static_cast<char32_t>(text.front())))
        text.remove_prefix(1);
    while (!text.empty() && isAsciiSpace(static_cast<char32_t>(text.back())))
        text.remove_suffix(1);
    return text;
}

}

std::string lowerAscii(std::string_view text)
{
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), lowerOf);
    return lower;
}

bool equalsAscii(std::string_view a, std::string_view b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return lowerOf(x) == lowerOf(y); });
}

std::string_view trimSpace(std::string_view text)
{
    return trimmed(text);
}

TextView trimSpace(TextView text)
{
    return trimmed(text);
}

std::vector<std::string> words(std::string_view text, std::string_view separators)
{
    std::vector<std::string> found;
    std::size_t begin = text.find_first_not_of(separators);
    while (begin != std::string_view::npos) {
        const std::size_t end = std::min(text.find_first_of(separators, begin), text.size());
        found.emplace_back(text.substr(begin, end - begin));
        begin = text.find_first_not_of(separators, end);
    }
    return found;
}

std::string_view takeLine(std::string_view& text)
{
    // A last line needs no LF.
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

std::vector<std::string_view> linesOf(std::string_view text)
{
    std::vector<std::string_view> lines;
    while (!text.empty())
        lines.push_back(takeLine(text));
    return lines;
}

int hexValue(char32_t c)
{
    if (isAsciiDigit(c)) return static_cast<int>(c - '0');
    if (c >= 'A' && c <= 'F') return static_cast<int>(c - 'A') + 10;
    if (c >= 'a' && c <= 'f') return static_cast<int>(c - 'a') + 10;
    return -1;
}

std::string asciiOnly(TextView text)
{
    std::string bytes;
    for (const char16_t unit : text)
        if (unit < 0x80) bytes += static_cast<char>(unit);
    return bytes;
}

}
