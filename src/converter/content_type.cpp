#include "converter/content_type.h"

#include "converter/ascii.h"

#include <algorithm>

namespace tolvek {

namespace {

// The piece up to a ";" outside of quotes; it is taken off the front.
std::string takePiece(std::string_view& rest)
{
    std::string piece;
    bool quoted = false;
    while (!rest.empty()) {
        const char c = rest.front();
        rest.remove_prefix(1);
        if (c == ';' && !quoted) break;
        if (c == '"') quoted = !quoted;
        if (c == '\\' && quoted && !rest.empty()) {
            piece += rest.front();
            rest.remove_prefix(1);
        } else if (c != '"') {
            piece += c;
        }
    }
    return std::string(trimSpace(std::string_view(piece)));
}

// charset*=us-ascii'en'value: the value behind the second quote.
std::string extendedValue(const std::string& value)
{
    const std::size_t second = value.find('\'', std::min(value.find('\''), value.size() - 1) + 1);
    return second == std::string::npos ? value : value.substr(second + 1);
}

}

std::string ContentType::parameter(const std::string& name) const
{
    const auto found = parameters.find(name);
    return found == parameters.end() ? std::string() : found->second;
}

ContentType parseContentType(std::string_view value)
{
    ContentType content;
    content.type = lowerAscii(takePiece(value));
    content.type.erase(std::min(content.type.find_first_of(" \t\n("), content.type.size()));
    while (!value.empty()) {
        const std::string piece = takePiece(value);
        const std::size_t equals = piece.find('=');
        if (equals == std::string::npos) continue;
        std::string name = lowerAscii(trimSpace(std::string_view(piece).substr(0, equals)));
        std::string text(trimSpace(std::string_view(piece).substr(equals + 1)));
        if (name.ends_with('*') && !text.empty()) {
            name.pop_back();
            text = extendedValue(text);
        }
        content.parameters.emplace(std::move(name), std::move(text));
    }
    return content;
}

}
