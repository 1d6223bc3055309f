#include "converter/mime_parts.h"

#include "converter/ascii.h"

#include <algorithm>

namespace tolvek {

namespace {

bool isBoundary(std::string_view line, std::string_view boundary)
{
    if (!line.starts_with("--") || line.substr(2, boundary.size()) != boundary) return false;
    const std::string_view rest = trimSpace(line.substr(2 + boundary.size()));
    return rest.empty() || rest == "--";
}

std::vector<std::string_view> partsBetween(std::string_view body, const std::string& boundary)
{
    std::vector<std::string_view> parts;
    std::size_t begin = std::string_view::npos;
    std::size_t at = 0;
    for (std::string_view rest = body; !rest.empty();) {
        const std::string_view line = takeLine(rest);
        if (isBoundary(line, boundary)) {
            if (begin != std::string_view::npos) parts.push_back(body.substr(begin, at - begin));
            begin = std::min(at + line.size() + 1, body.size());
            // Longer than "--" and the boundary: the closing line. What follows it is
            // no part.
            if (trimSpace(line).size() > boundary.size() + 2) return parts;
        }
        at += line.size() + 1;
    }
    // The closing line is missing: the mail was cut off.
    if (begin != std::string_view::npos && begin < body.size()) parts.push_back(body.substr(begin));
    return parts;
}

// The boundary found in the body itself: the first line of dashes that is followed by
// a field of a part.
std::string shownBoundary(std::string_view body)
{
    std::string_view before;
    while (!body.empty()) {
        const std::string_view line = takeLine(body);
        const bool part = equalsAscii(line.substr(0, 8), "content-") && !fieldName(line).empty();
        if (part && before.starts_with("--") && before.size() > 2)
            return std::string(before.substr(2));
        before = trimSpace(line);
    }
    return {};
}

}

RawPart splitPart(std::string_view part)
{
    // A part without fields.
    if (part.starts_with("\n")) return {{}, part.substr(1)};
    const std::size_t end = part.find("\n\n");
    if (end == std::string_view::npos) return {part, {}};
    return {part.substr(0, end + 1), part.substr(end + 2)};
}

std::vector<std::string_view> partsOf(const HeaderFields& fields, const ContentType& content,
                                      std::string_view body)
{
    const bool announced = content.type.starts_with("multipart/");
    // Some gateways dropped Content-Type but left MIME-Version.
    const bool lost = content.type.empty() && !fields.value("mime-version").empty();
    if (!announced && !lost) return {};
    const std::string boundary = content.parameter("boundary");
    auto parts = boundary.empty() ? std::vector<std::string_view>() : partsBetween(body, boundary);
    const std::string shown = parts.empty() ? shownBoundary(body) : std::string();
    return shown.empty() ? parts : partsBetween(body, shown);
}

}
