// Width and case of characters.
#include "platform/runtime/kana.h"

#include <algorithm>

namespace tolvek {

namespace {

constexpr TextView kWideKana = u"。「」、・ヲァィゥェォャュョッーアイウエオカキクケコサシスセソ"
                               u"タチツテトナニヌネノハヒフヘホマミムメモヤユヨラリルレロワン゛゜";
constexpr char16_t kFirstNarrowKana = u'\uFF61';
constexpr TextView kTakesVoicing = u"カキクケコサシスセソタチツテトハヒフヘホ";
constexpr TextView kTakesSemiVoicing = u"ハヒフヘホ";

bool contains(TextView characters, char16_t c)
{
    return characters.find(c) != characters.npos;
}

char16_t wideAscii(char16_t c)
{
    if (c == u' ') return u'\u3000';
    // The backslash separates folders in paths and shows as the yen sign on
    // Japanese screens; it keeps its width.
    const bool widens = c > u' ' && c < u'\x7F' && c != u'\\';
    return widens ? static_cast<char16_t>(c + 0xFEE0) : c;
}

// A range of capitals and the distance to their small letters.
struct CaseRange {
    char16_t first, last, step;
};

// The Greek range has a gap at U+03A2, which is unassigned.
constexpr CaseRange kUpperCase[] = {
    {u'A', u'Z', 0x20},           {u'\u0391', u'\u03A1', 0x20}, {u'\u03A3', u'\u03A9', 0x20},
    {u'\u0400', u'\u040F', 0x50}, {u'\u0410', u'\u042F', 0x20}, {u'\u2160', u'\u2169', 0x10},
    {u'Ａ', u'Ｚ', 0x20},
};

char16_t lower(char16_t c)
{
    for (const CaseRange& range : kUpperCase)
        if (c >= range.first && c <= range.last) return static_cast<char16_t>(c + range.step);
    return c;
}

}

char16_t wideKana(char16_t narrow)
{
    return kWideKana[narrow - kFirstNarrowKana];
}

char16_t joinedKana(char16_t narrow, char16_t mark)
{
    const char16_t wide = wideKana(narrow);
    // In Unicode the voiced form follows the plain one directly, the semi-voiced
    // form is the one after.
    if (mark == kVoicedMark && contains(kTakesVoicing, wide))
        return static_cast<char16_t>(wide + 1);
    // ヴ is the exception: it doesn't follow ウ in Unicode.
    if (mark == kVoicedMark && wide == u'ウ') return u'ヴ';
    if (mark == kSemiVoicedMark && contains(kTakesSemiVoicing, wide))
        return static_cast<char16_t>(wide + 2);
    return 0;
}

char16_t takeWideKana(TextView text, std::size_t& at)
{
    const char16_t c = text[at++];
    if (!isNarrowKana(c)) return c;
    const char16_t joined = at < text.size() ? joinedKana(c, text[at]) : u'\0';
    if (joined == 0) return wideKana(c);
    ++at;
    return joined;
}

Text toWide(TextView text)
{
    Text wide;
    wide.reserve(text.size());
    for (std::size_t at = 0; at < text.size();)
        wide += wideAscii(takeWideKana(text, at));
    return wide;
}

Text lowerCase(TextView text)
{
    Text result(text);
    std::ranges::transform(result, result.begin(), lower);
    return result;
}

}
