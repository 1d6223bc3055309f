// Half-width kana and their full-width forms, for conversions and for comparisons
// that ignore width.
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

// The single character for a half-width kana followed by a voicing mark; 0 if code
// page 932 has none (ﾜﾞ stays two characters).
char16_t joinedKana(char16_t narrow, char16_t mark);

// The full-width form of the character at `at`, and moves `at` past it: by two
// units for a kana with its mark, otherwise by one. Other characters are returned
// unchanged.
char16_t takeWideKana(TextView text, std::size_t& at);

}
