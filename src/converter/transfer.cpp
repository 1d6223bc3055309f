#include "converter/transfer.h"

#include "converter/ascii.h"

#include <cstdint>

namespace tolvek {

namespace {

int base64Value(char c)
{
    if (c >= 'A' && c <= 'Z') return c - 'A';
    if (c >= 'a' && c <= 'z') return c - 'a' + 26;
    if (c >= '0' && c <= '9') return c - '0' + 52;
    if (c == '+') return 62;
    return c == '/' ? 63 : -1;
}

// The byte behind a "=" at `at`, or -1.
int hexByte(std::string_view text, std::size_t at)
{
    if (at + 2 >= text.size()) return -1;
    const int high = hexValue(static_cast<unsigned char>(text[at + 1]));
    const int low = hexValue(static_cast<unsigned char>(text[at + 2]));
    return high < 0 || low < 0 ? -1 : high * 16 + low;
}

std::string_view withoutTrailingBlanks(std::string_view line)
{
    const std::size_t last = line.find_last_not_of(" \t\r");
    return last == std::string_view::npos ? std::string_view() : line.substr(0, last + 1);
}

void appendLine(std::string& out, std::string_view line)
{
    for (std::size_t at = 0; at < line.size(); ++at) {
        const int byte = line[at] == '=' ? hexByte(line, at) : -1;
        out += byte < 0 ? line[at] : static_cast<char>(byte);
        if (byte >= 0) at += 2;
    }
}

}

std::string decodeBase64(std::string_view text)
{
    std::string out;
    std::uint32_t bits = 0;
    int held = 0;
    for (const char c : text) {
        const int value = base64Value(c);
        if (c == '=') bits = 0, held = 0;
        if (value < 0) continue;
        bits = (bits << 6 | static_cast<std::uint32_t>(value)) & 0xFFFFFF;
        held += 6;
        if (held < 8) continue;
        held -= 8;
        out += static_cast<char>(bits >> held & 0xFF);
    }
    return out;
}

std::string decodeQuotedPrintable(std::string_view text)
{
    std::string out;
    for (const std::string_view raw : linesOf(text)) {
        std::string_view line = withoutTrailingBlanks(raw);
        const bool soft = !line.empty() && line.back() == '=';
        if (soft) line.remove_suffix(1);
        appendLine(out, line);
        if (!soft) out += '\n';
    }
    return out;
}

std::string decodeQWord(std::string_view text)
{
    std::string blanked(text);
    for (char& c : blanked)
        if (c == '_') c = ' ';
    std::string out;
    appendLine(out, blanked);
    return out;
}

std::string decodeTransfer(std::string_view text, std::string_view encoding)
{
    const auto parts = words(encoding, " \t\r\n;\"");
    const std::string name = parts.empty() ? std::string() : lowerAscii(parts.front());
    if (name == "base64") return decodeBase64(text);
    if (name == "quoted-printable") return decodeQuotedPrintable(text);
    return std::string(text);
}

}
