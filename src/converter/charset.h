// Bytes of a mail into text. Nothing here fails: what can't be read becomes a
// character that shows its place.
#pragma once
#include "platform/runtime/text.h"

#include <string_view>

namespace tolvek {

// By the label, in any of the spellings met ("x-sjis", "cp932", "euc-jp*ja").
// A label that the bytes contradict is not believed: the charset is guessed,
// and the label is taken after all only when the guess reads no better.
Text decodeCharset(std::string_view bytes, std::string_view label);

// Without a usable label.
Text decodeGuessed(std::string_view bytes);

}
