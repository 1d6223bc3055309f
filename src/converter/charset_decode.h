// Converts the bytes of one charset to text. What can't be read becomes a visible
// substitute character.
#pragma once
#include "converter/charset_guess.h"
#include "platform/runtime/text.h"

#include <string>
#include <string_view>

namespace tolvek {

// For any charset but Other, which is read as code page 932.
Text decodeAs(std::string_view bytes, Charset charset);

// By ICU's name; decodeNamed reads an unknown one as code page 932.
bool isKnownName(const std::string& name);
Text decodeNamed(std::string_view bytes, const std::string& name);

// Whether text in this charset may be cut after a LF: no shift state continues beyond
// it, and LF is never part of another character.
bool endsWithItsLines(const std::string& name);

}
