#include "converter/charset_guess.h"

#include "converter/iso2022jp.h"

#include <unicode/utf8.h>

#include <algorithm>

namespace tolvek {

namespace {

constexpr int kBroken = -20; // a sequence that the charset can't have
constexpr int kKana = 4;     // Japanese text is half kana
constexpr int kKanji = 1;
constexpr int kHalfKana = -1; // what EUC-JP looks like when read as code page 932

bool within(unsigned char c, int first, int last)
{
    return c >= first && c <= last;
}

// What one character at the front is worth, and its length.
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
    const bool lead = within(c, 0x81, 0x9F) || within(c, 0xE0, 0xFC);
    if (!lead || !(within(next, 0x40, 0x7E) || within(next, 0x80, 0xFC))) return {kBroken, 1};
    return {c == 0x82 || c == 0x83 ? kKana : kKanji, 2};
}

Step eucStep(std::string_view bytes)
{
    const auto c = static_cast<unsigned char>(bytes[0]);
    const auto next = static_cast<unsigned char>(bytes.size() > 1 ? bytes[1] : 0);
    const auto third = static_cast<unsigned char>(bytes.size() > 2 ? bytes[2] : 0);
    if (c < 0x80) return {0, 1};
    if (c == 0x8E && within(next, 0xA1, 0xDF)) return {0, 2};
    if (c == 0x8F && within(next, 0xA1, 0xFE) && within(third, 0xA1, 0xFE)) return {0, 3};
    if (!within(c, 0xA1, 0xFE) || !within(next, 0xA1, 0xFE)) return {kBroken, 1};
    return {c == 0xA4 || c == 0xA5 ? kKana : kKanji, 2};
}

template <class StepOf> int scoreOf(std::string_view bytes, StepOf stepOf)
{
    int score = 0;
    while (!bytes.empty()) {
        const Step step = stepOf(bytes);
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

}

Charset guessCharset(std::string_view bytes)
{
    if (looksLikeIso2022Jp(bytes)) return Charset::Iso2022Jp;
    if (isAscii(bytes)) return Charset::Ascii;
    if (isMostlyUtf8(bytes)) return Charset::Utf8;
    return scoreOf(bytes, eucStep) > scoreOf(bytes, ansiStep) ? Charset::EucJp : Charset::Ansi;
}

bool isAscii(std::string_view bytes)
{
    return std::all_of(bytes.begin(), bytes.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
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
