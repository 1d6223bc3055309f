#include "converter/content_type.h"

#include "converter/ascii.h"

#include <algorithm>

namespace tolvek {

namespace {

// Whether a backslash escapes the next character. Others belong to a path, or are the
// second byte of a Shift_JIS character.
bool isEscape(std::string_view piece, char c, std::string_view rest)
{
    const bool half = !piece.empty() && static_cast<unsigned char>(piece.back()) >= 0x80;
    return c == '\\' && !half && (rest.starts_with("\"") || rest.starts_with("\\"));
}

// Takes the piece up to a ";" outside quotes off the front.
std::string takePiece(std::string_view& rest)
{
    std::string piece;
    bool quoted = false;
    while (!rest.empty()) {
        const char c = rest.front();
        rest.remove_prefix(1);
        if (c == ';' && !quoted) break;
        if (c == '"') quoted = !quoted;
        if (quoted && isEscape(piece, c, rest)) {
            piece += rest.front();
            rest.remove_prefix(1);
        } else if (c != '"') {
            piece += c;
        }
    }
    return std::string(trimSpace(std::string_view(piece)));
}

// charset'language'value of RFC 2231, or a charset and a value, or the value alone.
ParameterValue extendedValue(const std::string& value)
{
    const std::size_t first = value.find('\'');
    if (first == std::string::npos) return {value, {}};
    const std::size_t second = std::min(value.find('\'', first + 1), value.size());
    return {value.substr(std::min(second + 1, value.size())), value.substr(0, first)};
}

std::string percentDecoded(std::string_view text)
{
    std::string out;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto digit = [&](std::size_t offset) {
            return at + offset < text.size()
                       ? hexValue(static_cast<unsigned char>(text[at + offset]))
                       : -1;
        };
        const bool code = text[at] == '%' && digit(1) >= 0 && digit(2) >= 0;
        out += code ? static_cast<char>(digit(1) * 16 + digit(2)) : text[at];
        if (code) at += 2;
    }
    return out;
}

// Of one parameter; a real one has a few.
constexpr int kMostPieces = 100;

}

std::string ContentType::parameter(const std::string& name) const
{
    return fullParameter(name).bytes;
}

ParameterValue ContentType::fullParameter(const std::string& name) const
{
    // A plain parameter comes before the extended one (name*), and that before the
    // numbered pieces (name*0, name*1*).
    const auto find = [this](const std::string& full) { return parameters.find(full); };
    if (const auto plain = find(name); plain != parameters.end()) return {plain->second, {}};
    ParameterValue value;
    if (const auto whole = find(name + "*"); whole != parameters.end()) {
        value = extendedValue(whole->second);
        return {percentDecoded(value.bytes), value.charset};
    }
    for (int piece = 0; piece < kMostPieces; ++piece) {
        const std::string numbered = name + "*" + std::to_string(piece);
        const bool coded = find(numbered + "*") != parameters.end();
        const auto found = find(numbered + (coded ? "*" : ""));
        if (found == parameters.end()) break;
        ParameterValue part{found->second, value.charset};
        // Only the first piece states the charset.
        if (coded && piece == 0) part = extendedValue(part.bytes);
        value.charset = part.charset;
        value.bytes += coded ? percentDecoded(part.bytes) : part.bytes;
    }
    return value;
}

ContentType parseContentType(std::string_view value)
{
    ContentType content;
    content.type = lowerAscii(takePiece(value));
    // Some programs append a comment, or a parameter without the semicolon.
    content.type.erase(std::min(content.type.find_first_of(" \t\n("), content.type.size()));
    while (!value.empty()) {
        const std::string piece = takePiece(value);
        const std::size_t equals = piece.find('=');
        if (equals == std::string::npos) continue;
        std::string name = lowerAscii(trimSpace(std::string_view(piece).substr(0, equals)));
        std::string text(trimSpace(std::string_view(piece).substr(equals + 1)));
        // Of two parameters of one name the first counts.
        content.parameters.emplace(std::move(name), std::move(text));
    }
    return content;
}

}
