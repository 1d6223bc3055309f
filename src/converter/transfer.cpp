#include "converter/transfer.h"

#include "converter/ascii.h"

#include <algorithm>
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

// The byte that the "=" at `at` encodes, or -1.
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

// A long line may be damaged in a few places; a short one with one wrong character is
// ordinary text.
bool isBase64Line(std::string_view line)
{
    constexpr std::size_t kLong = 40;
    const auto wrong = std::count_if(line.begin(), line.end(),
                                     [](char c) { return base64Value(c) < 0 && c != '='; });
    const bool blanks = line.find_first_of(" \t") != std::string_view::npos;
    return wrong == 0 ||
           (!blanks && line.size() >= kLong && static_cast<std::size_t>(wrong) * 20 <= line.size());
}

// At most one byte in twenty is a control that no text has.
bool readsLikeText(std::string_view bytes)
{
    constexpr std::string_view kUsed("\t\n\f\x0E\x0F\x1A\x1B");
    std::size_t odd = 0;
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        const char c = bytes[at];
        const bool lineEnd = c == '\r' && at + 1 < bytes.size() && bytes[at + 1] == '\n';
        const bool control = c >= 0 && c < 0x20 && !lineEnd;
        odd += control && kUsed.find(c) == std::string_view::npos ? 1 : 0;
    }
    return odd * 20 <= bytes.size();
}

// The length in bytes of the lines at the front that may be one encoding: all but the
// last are as long as the first.
std::size_t base64Run(std::string_view text)
{
    std::size_t end = 0;
    std::size_t full = 0;
    while (end < text.size()) {
        const std::string_view raw = text.substr(end, text.find('\n', end) - end);
        const std::string_view line = trimSpace(raw);
        if (!isBase64Line(line)) return end;
        end = std::min(end + raw.size() + 1, text.size());
        full = std::max(full, line.size());
        if (!line.empty() && (line.size() < full || line.ends_with("="))) return end;
    }
    return end;
}

// A short last line may be a word of the text that follows.
std::string_view withoutLastLine(std::string_view run)
{
    const std::string_view lines = run.substr(0, run.size() - (run.ends_with("\n") ? 1 : 0));
    return run.substr(0, lines.rfind('\n') + 1); // npos + 1 is 0
}

bool isWholeEncoding(std::string_view run)
{
    const auto units = std::count_if(run.begin(), run.end(),
                                     [](char c) { return base64Value(c) >= 0 || c == '='; });
    return units % 4 == 0;
}

}

std::string decodeBase64Text(std::string_view text, bool wideText)
{
    std::string out;
    while (!text.empty()) {
        std::string decoded;
        const auto believed = [&](std::string_view run) {
            // After the first encoding only whole groups count, as words of a letter
            // pass for base64 too.
            if (run.empty() || (!out.empty() && !isWholeEncoding(run))) return false;
            decoded = decodeBase64(run);
            return wideText || readsLikeText(decoded);
        };
        std::string_view run = text.substr(0, base64Run(text));
        const bool whole = believed(run);
        if (!whole) run = withoutLastLine(run);
        if (!whole && !believed(run)) break;
        if (out.empty())
            out = std::move(decoded);
        else
            out += decoded;
        text.remove_prefix(run.size());
    }
    if (!out.empty() && !text.empty() && out.back() != '\n') out += '\n';
    return out.append(text);
}

std::string decodeBase64(std::string_view text)
{
    std::string out;
    out.reserve(text.size() / 4 * 3 + 3);
    std::uint32_t bits = 0;
    int held = 0;
    for (const char c : text) {
        const int value = base64Value(c);
        // Padding ends a group; another encoding may follow.
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
    out.reserve(text.size() + 1);
    while (!text.empty()) {
        // Trailing blanks were added on the way; an encoder writes its own as =20.
        std::string_view line = withoutTrailingBlanks(takeLine(text));
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

namespace {

std::string encodingName(std::string_view encoding)
{
    const auto parts = words(encoding, " \t\r\n;\"");
    return parts.empty() ? std::string() : lowerAscii(parts.front());
}

}

bool isBase64Name(std::string_view encoding)
{
    return encodingName(encoding) == "base64";
}

std::string decodeTransfer(std::string_view text, std::string_view encoding)
{
    const std::string name = encodingName(encoding);
    if (name == "base64") return decodeBase64(text);
    if (name == "quoted-printable") return decodeQuotedPrintable(text);
    return std::string(text);
}

}
