// Converts bytes of a mail to text. Nothing here fails: what can't be read becomes a
// visible substitute character.
#pragma once
#include "converter/charset_guess.h"
#include "platform/runtime/text.h"

#include <functional>
#include <string>
#include <string_view>

namespace tolvek {

// By the label, in any of the spellings met ("x-sjis", "cp932", "euc-jp*ja"). A label
// that the bytes contradict isn't believed: the charset is guessed, and the label is
// used after all only if the guess is no better.
Text decodeCharset(std::string_view bytes, std::string_view label);

// The same in pieces that end with a line, for input as large as a whole mail. The
// charset is decided from all of the bytes.
void decodeInPieces(std::string_view bytes, std::string_view label,
                    const std::function<void(TextView)>& take);

// Without a usable label.
Text decodeGuessed(std::string_view bytes);

}
