#include "converter/plain_text.h"

#include "converter/ascii.h"
#include "platform/runtime/ansi_forms.h"
#include "platform/runtime/codepage932.h"

#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <array>

namespace tolvek {

namespace {

struct Nearest {
    UChar32 c;
    TextView text;
};

// Letters and signs that Unicode doesn't decompose into a letter of the code page and
// marks.
constexpr std::array<Nearest, 31> kNearest{
    {{0x00A1, u"!"},   {0x00A4, u"〓"}, {0x00A6, u"|"},  {0x00A9, u"(C)"}, {0x00AB, u"≪"},
     {0x00AE, u"(R)"}, {0x00BB, u"≫"},  {0x00BF, u"?"},  {0x00C6, u"AE"},  {0x00D0, u"D"},
     {0x00D8, u"O"},   {0x00DE, u"Th"}, {0x00DF, u"ss"}, {0x00E6, u"ae"},  {0x00F0, u"d"},
     {0x00F8, u"o"},   {0x00FE, u"th"}, {0x0110, u"D"},  {0x0111, u"d"},   {0x0131, u"i"},
     {0x0141, u"L"},   {0x0142, u"l"},  {0x0152, u"OE"}, {0x0153, u"oe"},  {0x201A, u","},
     {0x201B, u"’"},   {0x201E, u"\""}, {0x2039, u"<"},  {0x203A, u">"},   {0x2044, u"/"},
     {0x20AC, u"EUR"}}};

bool isPrivate(UChar32 c)
{
    // The private use area, and planes 15 and 16.
    return (c >= 0xE000 && c <= 0xF8FF) || c >= 0xF0000;
}

bool fits(UChar32 c)
{
    const auto unit = static_cast<char16_t>(c);
    return c <= 0xFFFF && fitsAnsi(TextView(&unit, 1));
}

bool isMark(UChar32 c)
{
    // Above are the voicing marks of kana, which change the sound.
    return c < 0x3000 && u_charType(c) == U_NON_SPACING_MARK;
}

Text nearestForm(UChar32 c);

// Empty unless every piece except the marks has a form: half a character would be
// misleading.
Text formOfPieces(UChar32 c)
{
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeString pieces;
    if (!icu::Normalizer2::getNFKDInstance(status)->getDecomposition(c, pieces)) return {};
    Text text;
    for (int at = 0; at < pieces.length(); at = pieces.moveIndex32(at, 1)) {
        if (isMark(pieces.char32At(at))) continue;
        const Text one = nearestForm(pieces.char32At(at));
        if (one.empty()) return {};
        text += one;
    }
    return text;
}

Text nearestForm(UChar32 c)
{
    for (const Nearest& nearest : kNearest)
        if (nearest.c == c) return Text(nearest.text);
    return fits(c) ? Text(1, static_cast<char16_t>(c)) : formOfPieces(c);
}

void append(Text& out, UChar32 c)
{
    // A combining mark without a place in the code page is dropped after its letter.
    const bool marked = isMark(c) && !fits(c) && !out.empty();
    const Text near = isPrivate(c) ? Text(u"〓") : fits(c) ? Text() : nearestForm(c);
    if (!near.empty())
        out += near;
    else if (!marked && c > 0xFFFF)
        (out += U16_LEAD(c)) += U16_TRAIL(c);
    else if (!marked)
        out += static_cast<char16_t>(c);
}

// Replacements for characters that code page 932 lacks: the letter without its marks, or
// the letters that are usually written instead. Private characters of one make of phone
// or machine become 〓. Characters without a near form stay.
Text nearestForms(Text text)
{
    if (std::all_of(text.begin(), text.end(), isOrdinary)) return text;
    Text forms;
    for (std::size_t at = 0; at < text.size();) {
        UChar32 c = 0;
        U16_NEXT(text.data(), at, text.size(), c);
        append(forms, c);
    }
    return forms;
}

bool isControl(char16_t c)
{
    // C0 without TAB, DEL and C1, and the line and paragraph separators.
    return (c < 0x20 && c != u'\t') || (c >= 0x7F && c < 0xA0) || c == 0x2028 || c == 0x2029;
}

// Of the first character. Whether all its bytes are there is for the caller to check.
std::size_t characterLength(std::string_view ansi)
{
    const auto c = static_cast<unsigned char>(ansi.front());
    return isLeadByte(c) ? 2 : 1;
}

// Characters that stay as they are; most lines consist of nothing else.
bool isPlain(char16_t c)
{
    return isOrdinary(c) && !isControl(c) && c != u'\'';
}

bool isLineEnd(char16_t unit)
{
    // NEL, LS and PS are line ends of other systems.
    return unit == u'\n' || unit == u'\r' || unit == u'\u0085' || unit == u'\u2028' ||
           unit == u'\u2029';
}

Text withoutControls(Text text)
{
    for (char16_t& c : text) {
        if (isControl(c)) c = u' ';
        // A single quote would end a quoted value of the store.
        if (c == u'\'') c = u'’';
    }
    return text;
}

}

Text plainLine(TextView text)
{
    if (std::all_of(text.begin(), text.end(), isPlain)) return Text(text);
    return withoutControls(nearestForms(ansiForms(text)));
}

Text foldedLine(TextView text)
{
    return withoutControls(ansiForms(text));
}

void appendPlainLines(std::string& lines, TextView text)
{
    while (!text.empty()) {
        const auto stop = std::find_if(text.begin(), text.end(), isLineEnd);
        const auto length = static_cast<std::size_t>(stop - text.begin());
        const bool pair = text.substr(length).starts_with(kCrLf);
        lines.append(toAnsi(plainLine(text.substr(0, length)))).push_back('\n');
        text.remove_prefix(std::min(length + (pair ? 2 : 1), text.size()));
    }
}

bool isBlankAnsi(std::string_view lines)
{
    constexpr std::string_view kWideBlank = "\x81\x40";
    while (!lines.empty()) {
        // Safe bytewise: each step begins at a character, and a lead byte is no blank.
        const bool wide = lines.starts_with(kWideBlank);
        if (!wide && !isAsciiSpace(static_cast<unsigned char>(lines.front()))) return false;
        lines.remove_prefix(wide ? 2 : 1);
    }
    return true;
}

std::string withoutBlanks(std::string_view lines)
{
    std::string out;
    while (!lines.empty()) {
        const std::string_view character = lines.substr(0, characterLength(lines));
        if (!isBlankAnsi(character)) out += character;
        lines.remove_prefix(character.size());
    }
    return out;
}

std::string_view wholePrefix(std::string_view ansi, std::size_t limit)
{
    std::size_t end = 0;
    while (end < ansi.size()) {
        const std::size_t length = characterLength(ansi.substr(end));
        if (end + length > limit || end + length > ansi.size()) break;
        end += length;
    }
    return ansi.substr(0, end);
}

}
