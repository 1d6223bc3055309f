#include "converter/text_part.h"

#include "converter/ascii.h"
#include "converter/charset.h"
#include "converter/html_text.h"
#include "converter/plain_text.h"
#include "converter/transfer.h"

namespace tolvek {

namespace {

bool isWide(const std::string& charset)
{
    const std::string name = lowerAscii(charset);
    return name.starts_with("utf-16") || name.starts_with("utf-32") || name.starts_with("ucs-") ||
           name.starts_with("iso-10646");
}

// HTML labelled as plain text is recognised by its first tag.
bool beginsLikeHtml(std::string_view bytes)
{
    const std::string front = lowerAscii(trimSpace(bytes.substr(0, 200)));
    return front.starts_with("<html") || front.starts_with("<!doctype html");
}

TextView takeLine(TextView& text)
{
    const std::size_t end = std::min(text.find(u'\n'), text.size());
    TextView line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    while (!line.empty() && line.back() == u'\r')
        line.remove_suffix(1);
    return line;
}

Text marks(std::size_t depth)
{
    return depth == 0 ? Text() : Text(depth, u'>') + u' ';
}

}

bool isCoded(std::string_view encoding)
{
    const std::string name = lowerAscii(trimSpace(encoding));
    // By the beginning: some programs append a comment or a semicolon.
    return name.starts_with("base64") || name.starts_with("quoted-printable");
}

std::string decodeBody(std::string_view body, std::string_view encoding)
{
    return decodeTransfer(body, encoding);
}

namespace {

// Unencoded bytes aren't copied; `room` owns decoded ones.
std::string_view decodedBytes(std::string_view body, const std::string& encoding,
                              const std::string& charset, std::string& room)
{
    if (isBase64Name(encoding))
        room = decodeBase64Text(body, isWide(charset));
    else if (isUuencodeName(encoding))
        room = uuencodedIn(body).bytes;
    else if (isCoded(encoding))
        room = decodeTransfer(body, encoding);
    else
        return body;
    return room;
}

// The result is hardly longer than the input; reserving avoids copying a large text as
// it grows.
std::string roomFor(std::string_view bytes)
{
    std::string lines;
    lines.reserve(bytes.size() + 1);
    return lines;
}

std::string htmlLines(std::string_view bytes, const std::string& charset)
{
    std::string lines = roomFor(bytes);
    HtmlReader page([&](TextView text) { appendPlainLines(lines, text); });
    // The label of the part counts more than that of the page: gateways convert the
    // one with the text and leave the other.
    decodeInPieces(bytes, charset.empty() ? charsetOfHtml(bytes) : charset,
                   [&](TextView piece) { page.add(piece); });
    page.finish();
    return lines;
}

std::string flowedLines(std::string_view bytes, const std::string& charset, bool deleteBlank)
{
    std::string lines;
    appendPlainLines(lines, unflowed(decodeCharset(bytes, charset), deleteBlank));
    return lines;
}

std::string plainLinesOf(std::string_view bytes, const std::string& charset)
{
    std::string lines = roomFor(bytes);
    decodeInPieces(bytes, charset, [&](TextView piece) { appendPlainLines(lines, piece); });
    return lines;
}

}

TextPart readTextPart(const HeaderFields& fields, const ContentType& content, std::string_view body)
{
    TextPart part;
    const std::string charset = content.parameter("charset");
    std::string room;
    std::string_view bytes =
        decodedBytes(body, fields.value("content-transfer-encoding"), charset, room);
    part.html = content.type == "text/html" || beginsLikeHtml(bytes);
    // Before the charset is decoded: the lines of a file are no text.
    if (!part.html && mayHoldUuencoded(bytes)) {
        room = withoutUuencoded(bytes, part.files);
        bytes = room;
    }
    if (part.html)
        part.lines = htmlLines(bytes, charset);
    else if (equalsAscii(content.parameter("format"), "flowed"))
        part.lines = flowedLines(bytes, charset, equalsAscii(content.parameter("delsp"), "yes"));
    else
        part.lines = plainLinesOf(bytes, charset);
    return part;
}

Text unflowed(TextView text, bool deleteBlank)
{
    Text out;
    bool open = false; // the line before continues
    std::size_t depthBefore = 0;
    while (!text.empty()) {
        TextView line = takeLine(text);
        const std::size_t depth = std::min(line.find_first_not_of(u'>'), line.size());
        line.remove_prefix(depth);
        // Senders put a blank before lines that begin with a blank, ">" or "From ".
        if (line.starts_with(u" ")) line.remove_prefix(1);
        // The signature mark ends in a blank but never joins a paragraph.
        const bool signature = line == u"-- ";
        const bool joined = open && depth == depthBefore && !signature;
        if (open && !joined) out += u'\n';
        if (!joined) out += marks(depth);
        open = !signature && line.ends_with(u" ");
        if (open && deleteBlank) line.remove_suffix(1);
        out += line;
        if (!open) out += u'\n';
        depthBefore = depth;
    }
    return out;
}

}
