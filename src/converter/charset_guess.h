// What charset bytes without a usable label are in: ISO-2022-JP when an escape
// is there, else UTF-8 when they are valid UTF-8, else whichever of code page
// 932 and EUC-JP reads more like Japanese, else windows-1252.
//
// Evidence against a label is asked more of than a guess, so that no right
// label loses by it.
#pragma once
#include <string_view>

namespace tolvek {

enum class Charset { Ascii, Iso2022Jp, Utf8, Ansi, EucJp, Western, Other };

Charset guessCharset(std::string_view bytes);

bool isAscii(std::string_view bytes);
// Many more whole characters of UTF-8 than broken ones: the text was cut
// somewhere, but no other charset makes such sequences by chance.
bool isMostlyUtf8(std::string_view bytes);
bool isValidAnsi(std::string_view bytes); // every lead byte has its trail
bool isValidEucJp(std::string_view bytes);

// UTF-8 without anything broken, two characters or more beyond ASCII, or one
// that takes three bytes. Pairs of bytes also occur in other charsets of the
// East; there `longOnes` asks for both.
bool isSurelyUtf8(std::string_view bytes, bool longOnes);

// Whole, and with as much kana as a Japanese text has. What could be half-width
// kana of code page 932 must have more of it to be EUC-JP.
bool isSurelyAnsi(std::string_view bytes);
bool isSurelyEucJp(std::string_view bytes);

}
