#include "converter/text_part.h"

#include "converter/ascii.h"
#include "converter/charset.h"
#include "converter/flowed_text.h"
#include "converter/html_text.h"
#include "converter/transfer.h"

namespace tolvek {

namespace {

bool isWide(const std::string& charset)
{
    const std::string name = lowerAscii(charset);
    return name.starts_with("utf-16") || name.starts_with("utf-32") || name.starts_with("ucs-") ||
           name.starts_with("iso-10646");
}

// HTML under a plain label is told by its first tag.
bool beginsLikeHtml(std::string_view bytes)
{
    const std::string front = lowerAscii(trimSpace(bytes.substr(0, 200)));
    return front.starts_with("<html") || front.starts_with("<!doctype html");
}

}

bool isCoded(std::string_view encoding)
{
    const std::string name = lowerAscii(trimSpace(encoding));
    return name.starts_with("base64") || name.starts_with("quoted-printable");
}

std::string decodeBody(std::string_view body, std::string_view encoding)
{
    return decodeTransfer(body, encoding);
}

TextPart readTextPart(const HeaderFields& fields, const ContentType& content, std::string_view body)
{
    TextPart part;
    const std::string encoding = fields.value("content-transfer-encoding");
    std::string charset = content.parameter("charset");
    std::string bytes;
    if (isBase64Name(encoding))
        bytes = decodeBase64Text(body, isWide(charset));
    else if (isUuencodeName(encoding))
        bytes = uuencodedIn(body).bytes;
    else
        bytes = decodeTransfer(body, encoding);
    part.html = content.type == "text/html" || beginsLikeHtml(bytes);
    if (part.html) {
        if (charset.empty()) charset = charsetOfHtml(bytes);
        part.text = htmlText(decodeCharset(bytes, charset));
        return part;
    }
    if (mayHoldUuencoded(bytes)) bytes = withoutUuencoded(bytes, part.files);
    part.text = decodeCharset(bytes, charset);
    if (equalsAscii(content.parameter("format"), "flowed"))
        part.text = unflowed(part.text, equalsAscii(content.parameter("delsp"), "yes"));
    return part;
}

}
