// Text as the whole program holds it: UTF-16, one position a code unit,
// positions counted from 1.
//
// Text-mode comparison is the Japanese locale's: case, kana type and width
// don't count (a = Ａ, あ = ア = ｱ, ｶﾞ = ガ); accents, voicing, small kana do,
// trailing blanks do. Binary comparison is by code unit.
#pragma once
#include <string>
#include <string_view>

namespace tolvek {

using Text = std::u16string;
using TextView = std::u16string_view;

enum class Compare { Binary, TextMode };

inline constexpr TextView kCrLf = u"\r\n";

// U+0020 and U+3000 at the named ends, nothing else (no TAB, no line end).
Text trim(TextView text);
Text ltrim(TextView text);
Text rtrim(TextView text);

// Slices as the platform makes them: positions from 1, what lies beyond the
// end is left out silently. start < 1 or length < 0 is error 5.
Text mid(TextView text, int start);
Text mid(TextView text, int start, int length);
Text left(TextView text, int length);
Text right(TextView text, int length);

// Overwrites in place: at most `length` units of `replacement`, never beyond
// the end of `target`; the target keeps its length. start outside it: error 5.
void overwrite(Text& target, int start, TextView replacement, int length);

int length(TextView text);       // in code units
int byteLength(TextView text);   // twice the units
int ansiLength(TextView text);   // bytes in code page 932

// Position (from 1) of the first occurrence of `what` at or behind `start`;
// 0 for none. An empty `what` is found at `start` (0 if start is beyond the end + 1).
int inStr(TextView text, TextView what, Compare mode, int start = 1);

// The same over the UTF-16LE bytes, from any byte position (from 1); a match
// may begin in the middle of a unit.
int inStrB(TextView text, TextView what, int startByte = 1);

// Below 0, 0, above 0.
int compareText(TextView a, TextView b, Compare mode);

// Narrow to wide (conversion 4): 20 to U+3000, 21-7E to U+FF01-FF5E except the
// backslash, half-width kana to katakana with their voicing mark taken in.
Text toWide(TextView text);

// A-Z, Ａ-Ｚ, Greek, Cyrillic, Ⅰ-Ⅹ.
Text lowerCase(TextView text);

Text blanks(int count);          // U+0020
Text cutAtNul(TextView text);    // up to the first U+0000
Text decimal(long long value);

Text fromUtf8(std::string_view bytes);   // bad bytes become U+FFFD
std::string toUtf8(TextView text);       // lone surrogates become U+FFFD

}
