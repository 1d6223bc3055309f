// Text as the whole program holds it: UTF-16 code units, with positions counted
// from 1.
//
// Text-mode comparison follows the Japanese locale: it ignores case, kana type and
// width (a = Ａ, あ = ア = ｱ, ｶﾞ = ガ), but not accents, voicing, small kana or
// trailing blanks. Binary comparison is by code unit.
#pragma once
#include <string>
#include <string_view>

namespace tolvek {

using Text = std::u16string;
using TextView = std::u16string_view;

enum class Compare { Binary, TextMode };

inline constexpr TextView kCrLf = u"\r\n";

// Remove U+0020 and U+3000 at the given ends, nothing else (no TAB, no line end).
Text trim(TextView text);
Text ltrim(TextView text);
Text rtrim(TextView text);

// The same questions without the copy: whether trim() would leave nothing, and how many
// units it would leave.
inline constexpr TextView kBlanks = u" \u3000";
inline bool isBlank(TextView text)
{
    return text.find_first_not_of(kBlanks) == TextView::npos;
}
inline int trimmedLength(TextView text)
{
    if (isBlank(text)) return 0;
    return static_cast<int>(text.find_last_not_of(kBlanks) - text.find_first_not_of(kBlanks) + 1);
}

// Slices as on the classic platform: positions start at 1, and what is beyond the
// end is silently omitted. start < 1 or length < 0 is error 5.
Text mid(TextView text, int start);
Text mid(TextView text, int start, int length);
Text left(TextView text, int length);
Text right(TextView text, int length);

// Overwrites in place at most `length` units of `replacement`, never beyond the end
// of `target`, whose length doesn't change. Error 5 if start is outside.
void overwrite(Text& target, int start, TextView replacement, int length);

int length(TextView text);     // in code units
int byteLength(TextView text); // twice the units
int ansiLength(TextView text); // bytes in code page 932

// The position (from 1) of the first occurrence of `what` at or after `start`; 0 if
// there is none. An empty `what` is found at `start` (0 if start is beyond the end
// + 1).
int inStr(TextView text, TextView what, Compare mode, int start = 1);

// The same over the UTF-16LE bytes, from any byte position (from 1); a match may
// begin in the middle of a code unit.
int inStrB(TextView text, TextView what, int startByte = 1);

// Negative, 0 or positive.
int compareText(TextView a, TextView b, Compare mode);

// Narrow to wide (conversion 4): 20 to U+3000, 21-7E to U+FF01-FF5E except the
// backslash, half-width kana to katakana joined with their voicing mark.
Text toWide(TextView text);

// Lower case of A-Z, Ａ-Ｚ, Greek, Cyrillic and Ⅰ-Ⅹ.
Text lowerCase(TextView text);

Text blanks(int count);       // U+0020
Text cutAtNul(TextView text); // the text before the first U+0000
Text decimal(long long value);

Text fromUtf8(std::string_view bytes); // invalid bytes become U+FFFD
std::string toUtf8(TextView text);     // lone surrogates become U+FFFD

}
