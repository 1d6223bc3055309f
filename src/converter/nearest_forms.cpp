#include "converter/nearest_forms.h"

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

}

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

}
