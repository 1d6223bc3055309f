// Bytes of a mail into text. Nothing here fails: what can't be read becomes a
// character that shows its place.
#pragma once
#include "converter/charset_guess.h"
#include "platform/runtime/text.h"

#include <functional>
#include <string>
#include <string_view>

namespace tolvek {

// By the label, in any of the spellings met ("x-sjis", "cp932", "euc-jp*ja").
// A label that the bytes contradict is not believed: the charset is guessed,
// and the label is taken after all only when the guess reads no better.
Text decodeCharset(std::string_view bytes, std::string_view label);

// The same in pieces that end with a line, for what may be a whole mail; what it
// is in is decided by all of the bytes.
void decodeInPieces(std::string_view bytes, std::string_view label,
                    const std::function<void(TextView)>& take);

// Without a usable label.
Text decodeGuessed(std::string_view bytes);

}
