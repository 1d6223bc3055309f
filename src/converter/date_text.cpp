#include "converter/date_text.h"

#include "converter/ascii.h"
#include "converter/encoded_words.h"

#include <unicode/normalizer2.h>
#include <unicode/uchar.h>

#include <algorithm>
#include <array>
#include <utility>

namespace tolvek {

namespace {

// Most fields are plain ASCII and skip the decoding. A byte of 80h or more is negative
// as char, so it fails the comparison too.
bool isPlain(std::string_view field)
{
    return std::all_of(field.begin(), field.end(), [](char c) { return c >= 0x09; }) &&
           field.find('\x1B') == std::string_view::npos &&
           field.find("=?") == std::string_view::npos;
}

std::string withoutComments(std::string_view text)
{
    std::string out;
    int depth = 0;
    for (const char c : text) {
        if (c == '(') ++depth;
        // kYearFirst is a control itself and must survive.
        const bool control = c >= 0 && c < 0x20 && c != kYearFirst;
        if (depth == 0) out += c == '"' || c == '\'' || control ? ' ' : c;
        if (c == ')' && depth > 0) --depth;
    }
    return out;
}

struct Writing {
    TextView text;
    std::string_view ascii;
};

// The first match counts: longer writings come before their beginnings (元年 before 年,
// 月曜 before 月).
constexpr std::array<Writing, 24> kWritings{
    {{u"明治", "M"},     {u"大正", "T"},  {u"昭和", "S"},  {u"平成", "H"}, {u"令和", "R"},
     {u"元年", "1\x01"}, {u"年", "\x01"}, {u"月曜", " "},  {u"日曜", " "}, {u"月", "\x01"},
     {u"日", " "},       {u"時", ":"},    {u"分", ":"},    {u"秒", " "},   {u"午前", " am "},
     {u"午後", " pm "},  {u"년", "\x01"}, {u"월", "\x01"}, {u"일", " "},   {u"오전", " am "},
     {u"오후", " pm "},  {u"시", ":"},    {u"분", ":"},    {u"초", " "}}};

bool isEra(std::string_view ascii)
{
    return ascii.size() == 1 && ascii[0] >= 'A' && ascii[0] <= 'Z';
}

Text withoutMarks(TextView text)
{
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2* form = icu::Normalizer2::getNFKDInstance(status);
    const icu::UnicodeString source(text.data(), static_cast<int>(text.size()));
    icu::UnicodeString parts;
    if (U_SUCCESS(status)) form->normalize(source, parts, status);
    if (U_FAILURE(status)) return Text(text);
    parts.toLower();
    Text plain;
    for (int at = 0; at < parts.length(); ++at)
        if (u_charType(parts[at]) != U_NON_SPACING_MARK) plain += parts[at];
    return plain;
}

// Other kanji and kana are blanks; letters of foreign month names stay.
std::string otherCharacter(char16_t unit)
{
    if (unit < 0x80) return {static_cast<char>(unit)};
    const bool eastern = unit >= 0x2E80 && unit < 0xFF00;
    return eastern || u_charType(unit) == U_NON_SPACING_MARK ? " " : toUtf8(TextView(&unit, 1));
}

std::string asciiOf(TextView text)
{
    std::string out;
    while (!text.empty()) {
        const auto* const found =
            std::find_if(kWritings.begin(), kWritings.end(),
                         [&](const Writing& writing) { return text.starts_with(writing.text); });
        const bool known = found != kWritings.end();
        out += known ? std::string(found->ascii) : otherCharacter(text.front());
        text.remove_prefix(known ? found->text.size() : 1);
        // "平成 10年": the digit must follow the letter of the era directly.
        while (known && isEra(found->ascii) &&
               (text.starts_with(u" ") || text.starts_with(u"\u3000")))
            text.remove_prefix(1);
    }
    return out;
}

// The replacements come before the decomposition, which would split Hangul syllables.
std::string readable(std::string_view field)
{
    Text text = decodeEncodedWords(unfoldedText(field));
    for (char16_t& unit : text) {
        // full-width ASCII
        if (unit >= 0xFF01 && unit <= 0xFF5E) unit = static_cast<char16_t>(unit - 0xFEE0);
        if (unit == 0x3000) unit = u' ';
    }
    return toUtf8(withoutMarks(fromUtf8(asciiOf(text))));
}

struct Name {
    std::string_view beginning;
    int month;
};

constexpr std::array<std::string_view, 12> kEnglish{"jan", "feb", "mar", "apr", "may", "jun",
                                                    "jul", "aug", "sep", "oct", "nov", "dec"};

// German, French, Spanish, Italian, Portuguese, Dutch, the Nordic languages, Polish,
// Russian; lower case and without accents. The beginnings are long enough not to match
// the name of a day.
constexpr std::array<Name, 54> kOthers{
    {{"janv", 1}, {"ene", 1},  {"gen", 1},   {"sty", 1},  {"янв", 1},  {"fev", 2},  {"lut", 2},
     {"фев", 2},  {"marz", 3}, {"maerz", 3}, {"mrz", 3},  {"mrt", 3},  {"mars", 3}, {"мар", 3},
     {"avr", 4},  {"abr", 4},  {"kwi", 4},   {"апр", 4},  {"mai", 5},  {"mag", 5},  {"mei", 5},
     {"maj", 5},  {"маи", 5},  {"мая", 5},   {"juin", 6}, {"giu", 6},  {"cze", 6},  {"июн", 6},
     {"juil", 7}, {"lug", 7},  {"lip", 7},   {"июл", 7},  {"aout", 8}, {"ago", 8},  {"sie", 8},
     {"авг", 8},  {"set", 9},  {"wrz", 9},   {"сен", 9},  {"okt", 10}, {"ott", 10}, {"out", 10},
     {"paz", 10}, {"окт", 10}, {"lis", 11},  {"ноя", 11}, {"dez", 12}, {"dic", 12}, {"des", 12},
     {"gru", 12}, {"дек", 12}, {"jui", 7},   {"agu", 8},  {"nop", 11}}};

}

std::string dateText(std::string_view field)
{
    return withoutComments(isPlain(field) ? std::string(field) : readable(field));
}

int monthNumber(std::string_view word)
{
    if (word.size() < 3) return 0;
    const std::string lower = lowerAscii(word);
    for (std::size_t index = 0; index < kEnglish.size(); ++index)
        if (lower.starts_with(kEnglish[index])) return static_cast<int>(index) + 1;
    // The first match counts: "juin" and "juil" come before "jui".
    for (const Name& name : kOthers)
        if (lower.starts_with(name.beginning)) return name.month;
    return 0;
}

}
