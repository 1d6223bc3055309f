#include "converter/charset_guess.h"

#include "converter/ascii.h"
#include "converter/iso2022jp.h"
#include "platform/runtime/codepage932.h"

#include <unicode/utf8.h>

#include <algorithm>

namespace tolvek {

namespace {

constexpr int kBroken = -20; // a sequence that is invalid in the charset
constexpr int kKana = 4;     // Japanese text is half kana
constexpr int kKanji = 1;
constexpr int kHalfKana = -1; // EUC-JP read as code page 932 is full of it

bool within(unsigned char c, int first, int last)
{
    return c >= first && c <= last;
}

// Score and length of the character at the front.
struct Step {
    int score;
    std::size_t length;
};

Step ansiStep(std::string_view bytes)
{
    const auto c = static_cast<unsigned char>(bytes[0]);
    const auto next = static_cast<unsigned char>(bytes.size() > 1 ? bytes[1] : 0);
    if (c < 0x80) return {0, 1};
    if (within(c, 0xA1, 0xDF)) return {kHalfKana, 1};
    if (!isLeadByte(c) || !isTrailByte(next)) return {kBroken, 1};
    // Lead bytes 82h and 83h are the rows of hiragana and katakana.
    return {c == 0x82 || c == 0x83 ? kKana : kKanji, 2};
}

Step eucStep(std::string_view bytes)
{
    const auto c = static_cast<unsigned char>(bytes[0]);
    const auto next = static_cast<unsigned char>(bytes.size() > 1 ? bytes[1] : 0);
    const auto third = static_cast<unsigned char>(bytes.size() > 2 ? bytes[2] : 0);
    if (c < 0x80) return {0, 1};
    // 8Eh: half-width kana. 8Fh: JIS X 0212.
    if (c == 0x8E && within(next, 0xA1, 0xDF)) return {0, 2};
    if (c == 0x8F && within(next, 0xA1, 0xFE) && within(third, 0xA1, 0xFE)) return {0, 3};
    if (!within(c, 0xA1, 0xFE) || !within(next, 0xA1, 0xFE)) return {kBroken, 1};
    // A4h and A5h are the rows of hiragana and katakana.
    return {c == 0xA4 || c == 0xA5 ? kKana : kKanji, 2};
}

template <class StepOf> int scoreOf(std::string_view bytes, StepOf stepOf)
{
    int score = 0;
    while (!bytes.empty()) {
        const Step step = stepOf(bytes);
        // So that no mail is long enough to overflow the sum.
        score = std::clamp(score + step.score, -1'000'000, 1'000'000);
        bytes.remove_prefix(step.length);
    }
    return score;
}

template <class StepOf> bool isWhole(std::string_view bytes, StepOf stepOf)
{
    while (!bytes.empty()) {
        const Step step = stepOf(bytes);
        if (step.score == kBroken) return false;
        bytes.remove_prefix(step.length);
    }
    return true;
}

struct Counts {
    int characters = 0; // of two bytes
    int kana = 0;       // of two bytes
    bool broken = false;
};

template <class StepOf, class IsKana>
Counts countsOf(std::string_view bytes, StepOf stepOf, IsKana isKana)
{
    Counts counts;
    while (!bytes.empty() && !counts.broken) {
        const Step step = stepOf(bytes);
        counts.broken = step.score == kBroken;
        counts.characters += step.length >= 2 ? 1 : 0;
        counts.kana += step.length >= 2 && isKana(bytes) ? 1 : 0;
        bytes.remove_prefix(step.length);
    }
    return counts;
}

unsigned char byteAt(std::string_view bytes, std::size_t at)
{
    return static_cast<unsigned char>(at < bytes.size() ? bytes[at] : 0);
}

bool isAnsiKana(std::string_view bytes)
{
    const unsigned char trail = byteAt(bytes, 1);
    // 82h: hiragana; 83h: katakana. Their rows hold other characters too.
    if (byteAt(bytes, 0) == 0x82) return within(trail, 0x9F, 0xF1);
    return byteAt(bytes, 0) == 0x83 && within(trail, 0x40, 0x96);
}

bool isEucKana(std::string_view bytes)
{
    return within(byteAt(bytes, 0), 0xA4, 0xA5) && within(byteAt(bytes, 1), 0xA1, 0xF6);
}

// Whether code page 932 would read the bytes as ASCII and half-width kana only.
bool isHalfKanaAlone(std::string_view bytes)
{
    return std::all_of(bytes.begin(), bytes.end(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte < 0x80 || within(byte, 0xA1, 0xDF);
    });
}

bool isJapanese(const Counts& counts, int least)
{
    // An eighth of the two-byte characters is far less kana than Japanese text has,
    // and more than chance gives.
    return !counts.broken && counts.kana >= least && counts.kana * 8 >= counts.characters;
}

bool isHalfKana(unsigned char c)
{
    return within(c, 0xA6, 0xDF);
}

bool isLetter(unsigned char c)
{
    return isAsciiLetter(c);
}

// A Western word read as code page 932: an accented letter and the letter after it
// look like one kanji, within a word or at its beginning.
bool looksWestern(bool afterLetter, bool afterKanji, std::string_view pair)
{
    return isLetter(byteAt(pair, 1)) && (afterLetter || (!afterKanji && isLetter(byteAt(pair, 2))));
}

// Without a label, code page 932 is assumed only for bytes with kana, with two
// half-width kana in a row, or with kanji that are all assigned and in none of the
// places where a Western word would show them.
bool readsAsAnsi(std::string_view bytes)
{
    int doubtful = 0;
    bool afterLetter = false;
    bool afterKanji = false;
    bool common = false; // a pair that can't be two letters of windows-1252
    for (std::size_t at = 0; at < bytes.size();) {
        const std::string_view rest = bytes.substr(at);
        const Step step = ansiStep(rest);
        if (step.score != kBroken && isAnsiKana(rest)) return true;
        if (isHalfKana(byteAt(rest, 0)) && isHalfKana(byteAt(rest, 1))) return true;
        if (step.length == 2) {
            const Text one = fromAnsi(rest.substr(0, 2));
            // fromAnsi gives ・ for an unassigned pair; the range is user-defined
            // characters.
            const bool unassigned =
                one.size() != 1 || one[0] == u'\u30FB' || (one[0] >= 0xE000 && one[0] <= 0xF8FF);
            doubtful += unassigned || looksWestern(afterLetter, afterKanji, rest) ? 1 : 0;
            // Of the possible lead bytes, E0h to FCh hold nearly all letters of
            // windows-1252.
            common = common || byteAt(rest, 0) < 0xE0 || !isLetter(byteAt(rest, 1));
        }
        doubtful += step.score == kBroken ? 1 : 0;
        afterKanji = step.length == 2;
        afterLetter = step.length == 1 && isLetter(byteAt(rest, 0));
        at += step.length;
    }
    return common && doubtful == 0;
}

}

Charset guessCharset(std::string_view bytes)
{
    // JIS, ASCII and UTF-8 are recognised by their form; only after them does
    // frequency decide. A tie is code page 932.
    if (looksLikeIso2022Jp(bytes)) return Charset::Iso2022Jp;
    if (isAscii(bytes)) return Charset::Ascii;
    if (isMostlyUtf8(bytes)) return Charset::Utf8;
    if (scoreOf(bytes, eucStep) > scoreOf(bytes, ansiStep)) return Charset::EucJp;
    return readsAsAnsi(bytes) ? Charset::Ansi : Charset::Western;
}

bool isSurelyUtf8(std::string_view bytes, bool longOnes)
{
    const auto size = static_cast<std::int32_t>(bytes.size());
    int characters = 0;
    int longest = 0;
    for (std::int32_t at = 0; at < size;) {
        UChar32 c = 0;
        const std::int32_t begin = at;
        U8_NEXT(bytes.data(), at, size, c);
        if (c < 0) return false;
        characters += c >= 0x80 ? 1 : 0;
        longest = std::max(longest, at - begin);
    }
    // A single two-byte character may be chance; three-byte ones hardly are.
    return longOnes ? characters >= 2 && longest >= 3 : characters >= 2 || longest >= 3;
}

bool isSurelyAnsi(std::string_view bytes)
{
    return isJapanese(countsOf(bytes, ansiStep, isAnsiKana), 1);
}

bool isSurelyEucJp(std::string_view bytes)
{
    const Counts counts = countsOf(bytes, eucStep, isEucKana);
    return isJapanese(counts, 2) &&
           // Half-width kana in pairs are valid EUC-JP too, so then half must be kana.
           (!isHalfKanaAlone(bytes) || counts.kana * 2 >= counts.characters);
}

bool isAscii(std::string_view bytes)
{
    // Without an early exit the compiler vectorises the loop.
    unsigned char high = 0;
    for (const char c : bytes)
        high |= static_cast<unsigned char>(c);
    return high < 0x80;
}

bool isMostlyUtf8(std::string_view bytes)
{
    const auto size = static_cast<std::int32_t>(bytes.size());
    int whole = 0;
    int broken = 0;
    for (std::int32_t at = 0; at < size;) {
        UChar32 c = 0;
        U8_NEXT(bytes.data(), at, size, c);
        whole += c >= 0x80 ? 1 : 0;
        broken += c < 0 ? 1 : 0;
    }
    // Tolerates text that was cut inside a character, or mixed with a few stray bytes.
    return broken == 0 || whole > 2 * broken;
}

bool isValidAnsi(std::string_view bytes)
{
    return isWhole(bytes, ansiStep);
}

bool isValidEucJp(std::string_view bytes)
{
    return isWhole(bytes, eucStep);
}

}
