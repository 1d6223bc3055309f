#include "converter/uuencode.h"

#include "converter/ascii.h"

#include <algorithm>

namespace tolvek {

namespace {

bool isBegin(std::string_view line)
{
    if (!line.starts_with("begin ")) return false;
    // "begin 644 name": three or four octal digits, a blank and a name.
    const std::string_view mode = line.substr(6, line.find(' ', 6) - 6);
    return mode.size() >= 3 && mode.size() <= 4 && line.size() > 7 + mode.size() &&
           mode.find_first_not_of("01234567") == std::string_view::npos;
}

std::size_t sizeOfLine(std::string_view line)
{
    // The first character encodes the number of bytes; a backquote is 0 like a blank.
    return static_cast<std::size_t>(line[0] - ' ') & 63;
}

// Trailing blanks may have been lost on the way. Four characters encode three bytes;
// two more, a checksum, are accepted.
bool isDataLine(std::string_view line)
{
    const bool inside =
        std::all_of(line.begin(), line.end(), [](char c) { return c >= 0x20 && c <= 0x60; });
    if (line.empty() || !inside) return false;
    const std::size_t most = 1 + (sizeOfLine(line) + 2) / 3 * 4;
    return line.size() <= most + 2 && (sizeOfLine(line) == 0) == (line.size() <= 2);
}

std::string_view lineAt(std::string_view text, std::size_t at)
{
    std::string_view line = text.substr(at, text.find('\n', at) - at);
    while (line.ends_with("\r"))
        line.remove_suffix(1);
    return line;
}

std::size_t lineAfter(std::string_view text, std::size_t at)
{
    const std::size_t end = text.find('\n', at);
    return end == std::string_view::npos ? text.size() : end + 1;
}

void decodeLine(std::string& out, std::string_view line)
{
    const std::size_t end = out.size() + sizeOfLine(line);
    const auto value = [line](std::size_t at) {
        return at < line.size() ? static_cast<unsigned>(line[at] - ' ') & 63 : 0;
    };
    for (std::size_t at = 1; out.size() < end; at += 4) {
        const unsigned bits =
            value(at) << 18 | value(at + 1) << 12 | value(at + 2) << 6 | value(at + 3);
        for (int shift = 16; shift >= 0 && out.size() < end; shift -= 8)
            out += static_cast<char>(bits >> shift & 0xFF);
    }
}

// The position after the file that begins at `begin`, or `begin` when none does.
std::size_t takeFile(std::string_view text, std::size_t begin, UuencodedFile& file, bool keepBytes)
{
    const std::string_view first = lineAt(text, begin);
    std::size_t at = lineAfter(text, begin);
    // A letter may contain the word "begin", so a data line must follow.
    if (!isBegin(first) || at >= text.size() || !isDataLine(lineAt(text, at))) return begin;
    file.name = first.substr(first.find(' ', 6) + 1);
    while (at < text.size() && isDataLine(lineAt(text, at))) {
        const std::string_view line = lineAt(text, at);
        file.size += sizeOfLine(line);
        if (keepBytes) decodeLine(file.bytes, line);
        at = lineAfter(text, at);
    }
    // A file that was cut off lacks the end line.
    return at < text.size() && trimSpace(lineAt(text, at)) == "end" ? lineAfter(text, at) : at;
}

}

bool isUuencodeName(std::string_view transferEncoding)
{
    const std::string name = lowerAscii(trimSpace(transferEncoding));
    return name.starts_with("x-uue") || name.starts_with("uue") || name.starts_with("x-uuencode");
}

bool mayHoldUuencoded(std::string_view text)
{
    return text.starts_with("begin ") || text.find("\nbegin ") != std::string_view::npos;
}

std::string withoutUuencoded(std::string_view text, std::vector<UuencodedFile>& files)
{
    std::string rest;
    for (std::size_t at = 0; at < text.size();) {
        UuencodedFile file;
        // at is always the beginning of a line.
        const std::size_t end = text[at] == 'b' ? takeFile(text, at, file, false) : at;
        if (end > at) files.push_back(std::move(file));
        const std::size_t next = end > at ? end : lineAfter(text, at);
        if (end == at) rest += text.substr(at, next - at);
        at = next;
    }
    return rest;
}

UuencodedFile uuencodedIn(std::string_view body)
{
    UuencodedFile file;
    for (std::size_t at = 0; at < body.size(); at = lineAfter(body, at))
        if (takeFile(body, at, file, true) > at) break;
    return file;
}

}
