// Half-width kana and their full-width forms, for the conversions and for
// comparisons without regard to width.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

inline constexpr char16_t kVoicedMark = u'\uFF9E', kSemiVoicedMark = u'\uFF9F';

constexpr bool isNarrowKana(char16_t c)
{
    return c >= u'\uFF61' && c <= u'\uFF9F';
}

// The full-width form of U+FF61 to U+FF9F; a voicing mark becomes ゛ or ゜.
char16_t wideKana(char16_t narrow);

// The one character that a half-width kana and the mark behind it make; 0
// when they make none that code page 932 has (ﾜﾞ stays two).
char16_t joinedKana(char16_t narrow, char16_t mark);

// The full-width form of what stands at `at`, stepping over what was taken:
// two units for a kana with its mark, else one. Other characters as they are.
char16_t takeWideKana(TextView text, std::size_t& at);

}
