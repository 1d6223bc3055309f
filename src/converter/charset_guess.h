// Guesses the charset of bytes without a usable label: ISO-2022-JP if there is an
// escape, else UTF-8 if the bytes are valid UTF-8, else code page 932 or EUC-JP,
// whichever looks more like Japanese, else windows-1252.
//
// Evidence against a label must be stronger than a guess, so that no correct label is
// overridden.
#pragma once
#include <string_view>

namespace tolvek {

enum class Charset { Ascii, Iso2022Jp, Utf8, Ansi, EucJp, Western, Other };

Charset guessCharset(std::string_view bytes);

bool isAscii(std::string_view bytes);
// More than twice as many whole UTF-8 characters as broken ones, or none broken: the
// text was cut somewhere, but no other charset makes such sequences by chance.
bool isMostlyUtf8(std::string_view bytes);
bool isValidAnsi(std::string_view bytes); // every lead byte has a trail byte
bool isValidEucJp(std::string_view bytes);

// Valid UTF-8 with at least two characters beyond ASCII, or one of three bytes.
// Two-byte sequences also occur in other Eastern charsets; `longOnes` requires both.
bool isSurelyUtf8(std::string_view bytes, bool longOnes);

// Valid, and with as much kana as Japanese text has. Bytes that could be half-width
// kana of code page 932 must have more of it to be EUC-JP.
bool isSurelyAnsi(std::string_view bytes);
bool isSurelyEucJp(std::string_view bytes);

}
