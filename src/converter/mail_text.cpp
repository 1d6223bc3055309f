#include "converter/mail_text.h"

#include "converter/ascii.h"
#include "converter/charset.h"
#include "converter/content_type.h"
#include "converter/transfer.h"

#include <optional>
#include <vector>

namespace tolvek {

namespace {

constexpr int kDeepest = 20; // parts within parts; nobody's mail goes deeper

Text decodeBody(const HeaderFields& fields, const ContentType& content, std::string_view body)
{
    const std::string encoding = fields.value("content-transfer-encoding");
    const std::string charset = content.parameter("charset");
    const std::string name = lowerAscii(charset);
    const bool wide = name.starts_with("utf-16") || name.starts_with("utf-32") ||
                      name.starts_with("ucs-") || name.starts_with("iso-10646");
    const std::string bytes =
        isBase64Name(encoding) ? decodeBase64Text(body, wide) : decodeTransfer(body, encoding);
    return decodeCharset(bytes, charset);
}

struct Part {
    std::string_view head, body;
};

// Head and body of a part; a part may begin with the empty line at once.
Part splitPart(std::string_view part)
{
    if (part.starts_with("\n")) return {{}, part.substr(1)};
    const std::size_t end = part.find("\n\n");
    if (end == std::string_view::npos) return {part, {}};
    return {part.substr(0, end + 1), part.substr(end + 2)};
}

bool isBoundary(std::string_view line, std::string_view boundary)
{
    if (!line.starts_with("--") || line.substr(2, boundary.size()) != boundary) return false;
    const std::string_view rest = trimSpace(line.substr(2 + boundary.size()));
    return rest.empty() || rest == "--";
}

// The parts between boundary lines; the last one needs no closing line.
std::vector<std::string_view> partsOf(std::string_view body, const std::string& boundary)
{
    std::vector<std::string_view> parts;
    std::size_t begin = std::string_view::npos;
    std::size_t at = 0;
    for (const std::string_view line : linesOf(body)) {
        if (isBoundary(line, boundary)) {
            if (begin != std::string_view::npos) parts.push_back(body.substr(begin, at - begin));
            begin = std::min(at + line.size() + 1, body.size());
            if (trimSpace(line).size() > boundary.size() + 2) return parts;
        }
        at += line.size() + 1;
    }
    if (begin != std::string_view::npos && begin < body.size()) parts.push_back(body.substr(begin));
    return parts;
}

// The boundary that the body itself shows: the first line of dashes with a
// part's fields after it.
std::string shownBoundary(std::string_view body)
{
    std::string_view before;
    for (const std::string_view line : linesOf(body)) {
        const bool part = equalsAscii(line.substr(0, 8), "content-") && !fieldName(line).empty();
        if (part && before.starts_with("--") && before.size() > 2)
            return std::string(before.substr(2));
        before = trimSpace(line);
    }
    return {};
}

// By the boundary that was announced, else by the one that is there.
std::vector<std::string_view> partsOf(const HeaderFields& fields, const ContentType& content,
                                      std::string_view body)
{
    const bool announced = content.type.starts_with("multipart/");
    const bool lost = content.type.empty() && !fields.value("mime-version").empty();
    if (!announced && !lost) return {};
    const std::string boundary = content.parameter("boundary");
    auto parts = boundary.empty() ? std::vector<std::string_view>() : partsOf(body, boundary);
    const std::string shown = parts.empty() ? shownBoundary(body) : std::string();
    return shown.empty() ? parts : partsOf(body, shown);
}

class TextFinder {
public:
    Text find(const HeaderFields& fields, std::string_view body)
    {
        visit(fields, body, 0);
        if (plain_) return *plain_;
        if (attached_) return *attached_;
        return other_ ? *other_ : Text(kNoText);
    }

private:
    void visit(const HeaderFields& fields, std::string_view body, int depth)
    {
        const ContentType content = parseContentType(fields.value("content-type"));
        const auto parts =
            depth < kDeepest ? partsOf(fields, content, body) : std::vector<std::string_view>();
        for (const std::string_view raw : parts) {
            const Part part = splitPart(raw);
            visit(HeaderFields(part.head), part.body, depth + 1);
        }
        // Parts that were announced and never came: the body is all there is.
        if (parts.empty() &&
            (depth == 0 || content.type.empty() || content.type.starts_with("text/")))
            offer(fields, content, body, depth);
    }

    void offer(const HeaderFields& fields, const ContentType& content, std::string_view body,
               int depth)
    {
        const bool isText = content.type.empty() || content.type.starts_with("text/") ||
                            content.type.find('/') == std::string::npos ||
                            content.type.starts_with("multipart/");
        if (!isText || plain_) return;
        const bool plain = content.type != "text/html";
        const bool attached =
            lowerAscii(fields.value("content-disposition")).starts_with("attachment");
        auto& place = !plain ? other_ : attached ? attached_ : plain_;
        if (place) return;
        Text text = decodeBody(fields, content, body);
        const bool holdsText = !trimSpace(TextView(text)).empty();
        if (holdsText || depth == 0) place = std::move(text);
    }

    std::optional<Text> plain_, attached_, other_;
};

}

Text mailText(const HeaderFields& fields, std::string_view body)
{
    Text text = TextFinder().find(fields, body);
    const bool blank = text.find_first_not_of(u" \t\r\n\u3000\u00A0") == Text::npos;
    return blank ? Text(kNoText) : text;
}

}
