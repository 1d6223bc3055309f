#include "converter/plain_text.h"

#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/utf16.h>

namespace tolvek {

namespace {

// Left: what mail from elsewhere brings; right: the form in code page 932.
UChar32 folded(UChar32 c)
{
    switch (c) {
    case 0x00A0:
    case 0x2002:
    case 0x2003:
    case 0x2009:
    case 0x202F:
        return ' ';
    case 0x00A5:
        return 0xFFE5; // ¥
    case 0x2010:
    case 0x2015:
        return c;
    case 0x2011:
    case 0x2013:
        return '-';
    case 0x2014:
        return 0x2015; // dash
    case 0x203E:
        return 0xFFE3; // overline
    case 0x2022:
    case 0x00B7:
        return 0x30FB;
    case '\'':
        return 0x2019;
    default:
        return c;
    }
}

bool isInvisible(UChar32 c)
{
    return c == 0xAD || (c >= 0x200B && c <= 0x200F) || (c >= 0x202A && c <= 0x202E) ||
           (c >= 0x2060 && c <= 0x2069) || (c >= 0xFE00 && c <= 0xFE0F) || c == 0xFEFF ||
           (c >= 0xE0000 && c <= 0xE0FFF);
}

bool isControl(UChar32 c)
{
    return (c < 0x20 && c != '\t') || c == 0x7F || (c >= 0x80 && c < 0xA0) || c == 0x2028 ||
           c == 0x2029;
}

bool isLineEnd(char16_t unit)
{
    return unit == u'\n' || unit == u'\r' || unit == u'\u0085' || unit == u'\u2028' ||
           unit == u'\u2029';
}

// The character before and a combining mark as one, or a negative number. Only
// pairs: composing whole texts would also turn rare kanji into common ones.
UChar32 composed(UChar32 before, UChar32 mark)
{
    if (before == 0 || u_charType(mark) != U_NON_SPACING_MARK) return -1;
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2* nfc = icu::Normalizer2::getNFCInstance(status);
    return U_SUCCESS(status) ? nfc->composePair(before, mark) : -1;
}

void appendPoint(Text& text, UChar32 c)
{
    if (c > 0xFFFF) text += U16_LEAD(c);
    text += c > 0xFFFF ? U16_TRAIL(c) : static_cast<char16_t>(c);
}

}

Text plainLine(TextView text)
{
    Text plain;
    UChar32 before = 0;
    for (std::size_t at = 0; at < text.size();) {
        UChar32 c = 0;
        U16_NEXT(text.data(), at, text.size(), c);
        if (isInvisible(c)) continue;
        if (const UChar32 one = composed(before, c); one >= 0) {
            plain.resize(plain.size() - U16_LENGTH(before));
            c = one;
        }
        before = isControl(c) ? ' ' : folded(c);
        appendPoint(plain, before);
    }
    return plain;
}

std::vector<Text> plainLines(TextView text)
{
    std::vector<Text> lines;
    std::size_t begin = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (!isLineEnd(text[at])) continue;
        lines.push_back(plainLine(text.substr(begin, at - begin)));
        if (text[at] == u'\r' && at + 1 < text.size() && text[at + 1] == u'\n') ++at;
        begin = at + 1;
    }
    if (begin < text.size()) lines.push_back(plainLine(text.substr(begin)));
    return lines;
}

std::string_view wholePrefix(std::string_view ansi, std::size_t limit)
{
    std::size_t end = 0;
    while (end < ansi.size()) {
        const auto c = static_cast<unsigned char>(ansi[end]);
        const bool lead = (c >= 0x81 && c <= 0x9F) || (c >= 0xE0 && c <= 0xFC);
        const std::size_t length = lead ? 2 : 1;
        if (end + length > limit || end + length > ansi.size()) break;
        end += length;
    }
    return ansi.substr(0, end);
}

}
