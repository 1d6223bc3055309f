// The bytes of one charset into text. What can't be read becomes a character
// that shows its place.
#pragma once
#include "converter/charset_guess.h"
#include "platform/runtime/text.h"

#include <string>
#include <string_view>

namespace tolvek {

// By one of the charsets that aren't Other.
Text decodeAs(std::string_view bytes, Charset charset);

// By a name that the library may know.
bool isKnownName(const std::string& name);
Text decodeNamed(std::string_view bytes, const std::string& name);

// Whether text under the name may be cut after a LF: no state of it goes on
// beyond, and LF is no part of another character.
bool endsWithItsLines(const std::string& name);

}
