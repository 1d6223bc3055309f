#include "converter/further_part.h"

#include "converter/ascii.h"
#include "converter/charset.h"
#include "converter/encoded_words.h"
#include "converter/plain_text.h"
#include "converter/transfer.h"
#include "converter/uuencode.h"

#include <algorithm>

namespace tolvek {

namespace {

Text withCommas(std::size_t number)
{
    Text digits = decimal(static_cast<long long>(number));
    for (std::size_t at = digits.size(); at > 3;)
        digits.insert(at -= 3, 1, u',');
    return digits;
}

// A name may include a path of the sender's machine. The search is done after
// decoding, as a backslash is half a character in some charsets.
Text withoutFolders(const Text& name)
{
    return name.substr(name.find_last_of(u"/\\") + 1); // npos + 1 is 0
}

Text textOf(const ParameterValue& value)
{
    if (!value.charset.empty()) return decodeCharset(value.bytes, value.charset);
    return decodeEncodedWords(unfoldedText(value.bytes));
}

}

Text partName(const HeaderFields& fields, const ContentType& content)
{
    ParameterValue value =
        parseContentType(fields.value("content-disposition")).fullParameter("filename");
    if (value.bytes.empty()) value = content.fullParameter("name");
    return withoutFolders(trim(plainLine(textOf(value))));
}

std::size_t decodedSize(std::string_view body, std::string_view encoding)
{
    if (isBase64Name(encoding)) {
        // Counted instead of decoded: attachments are large.
        const auto units = std::count_if(body.begin(), body.end(), [](char c) {
            return c != '=' && !isAsciiSpace(static_cast<unsigned char>(c));
        });
        return static_cast<std::size_t>(units) * 3 / 4;
    }
    const std::size_t end =
        body.ends_with("\n") ? 1 : 0; // the line end before a boundary belongs to it
    if (isUuencodeName(encoding)) return uuencodedIn(body).size;
    return decodeTransfer(body.substr(0, body.size() - end), encoding).size();
}

Text furtherPartLine(TextView name, std::string_view type, std::size_t size)
{
    Text line = u"（添付: ";
    line += name.empty() ? TextView(u"名前なし") : name;
    line += u"、" + fromUtf8(type.empty() ? "application/octet-stream" : type) + u"、";
    return line + withCommas(size) + u" バイト）";
}

}
