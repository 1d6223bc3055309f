#include "platform/runtime/ansi_forms.h"

#include "platform/runtime/codepage932.h"

#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utf16.h>

namespace tolvek {

namespace {

// Soft hyphen, zero-width and direction characters, variation selectors, byte order
// mark and tags.
bool isInvisible(UChar32 c)
{
    return c == 0xAD || (c >= 0x200B && c <= 0x200F) || (c >= 0x202A && c <= 0x202E) ||
           (c >= 0x2060 && c <= 0x2069) || (c >= 0xFE00 && c <= 0xFE0F) || c == 0xFEFF ||
           (c >= 0xE0000 && c <= 0xE0FFF);
}

// The data is compiled into the library, so this call can't fail.
const icu::Normalizer2& normalizer()
{
    UErrorCode status = U_ZERO_ERROR;
    return *icu::Normalizer2::getNFCInstance(status);
}

// The composition of `before` and the combining mark, or a negative number. Only
// pairs are composed: composing whole texts would also turn rare kanji into common
// ones.
UChar32 composed(UChar32 before, UChar32 mark)
{
    if (before == 0 || u_charType(mark) != U_NON_SPACING_MARK) return -1;
    return normalizer().composePair(before, mark);
}

bool fits(UChar32 c)
{
    const auto unit = static_cast<char16_t>(c);
    return c <= 0xFFFF && fitsAnsi(TextView(&unit, 1));
}

// The single character of which `c` is an alternative code; `c` itself if there is
// none.
UChar32 canonical(UChar32 c)
{
    icu::UnicodeString mapped;
    const bool single = normalizer().getDecomposition(c, mapped) && mapped.countChar32() == 1;
    return single && fits(mapped.char32At(0)) ? mapped.char32At(0) : c;
}

UChar32 form(UChar32 c)
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
    case 0x00C5:
        return 0x212B; // Å
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
    default:
        break;
    }
    if (fits(c)) return c;
    const UChar32 own = c <= 0xFFFF ? ownForm(static_cast<char16_t>(c)) : c;
    return own != c ? own : canonical(c);
}

void appendPoint(Text& text, UChar32 c)
{
    if (c > 0xFFFF) text += U16_LEAD(c);
    text += c > 0xFFFF ? U16_TRAIL(c) : static_cast<char16_t>(c);
}

}

Text ansiForms(TextView text)
{
    Text forms;
    forms.reserve(text.size());
    UChar32 before = 0;
    for (std::size_t at = 0; at < text.size();) {
        if (isOrdinary(text[at])) {
            before = text[at];
            forms += text[at++];
            continue;
        }
        UChar32 c = 0;
        U16_NEXT(text.data(), at, text.size(), c);
        // `before` is kept, so that a mark joins its character across an invisible
        // one.
        if (isInvisible(c)) continue;
        if (const UChar32 one = composed(before, c); one >= 0) {
            forms.resize(forms.size() - U16_LENGTH(before));
            c = one;
        }
        before = form(c);
        appendPoint(forms, before);
    }
    return forms;
}

}
