// What charset bytes without a usable label are in: ISO-2022-JP when an escape
// is there, else UTF-8 when they are valid UTF-8, else whichever of code page
// 932 and EUC-JP reads more like Japanese.
#pragma once
#include <string_view>

namespace tolvek {

enum class Charset { Ascii, Iso2022Jp, Utf8, Ansi, EucJp, Other };

Charset guessCharset(std::string_view bytes);

bool isAscii(std::string_view bytes);
// Many more whole characters of UTF-8 than broken ones: the text was cut
// somewhere, but no other charset makes such sequences by chance.
bool isMostlyUtf8(std::string_view bytes);
bool isValidAnsi(std::string_view bytes); // every lead byte has its trail
bool isValidEucJp(std::string_view bytes);

}
