// The names of charsets in mail, in any of the spellings met.
#pragma once
#include "converter/charset_guess.h"

#include <string>
#include <string_view>

namespace tolvek {

// Lower case, without quotes, blanks and a language ("euc-jp*ja").
std::string cleanLabel(std::string_view label);

// These take clean names. Other is whatever the library may know.
Charset charsetOf(const std::string& name);

// The charsets in which Japanese bytes are no text of any language. Others, of
// old systems, have letters where kana begin.
bool isWesternName(const std::string& name);

// Mail under this label has windows-1252's characters too.
bool isLatin1Name(const std::string& name);

bool isWideName(const std::string& name);    // units of more than a byte, or UTF-7
bool isEasternName(const std::string& name); // pairs of high bytes are its characters

// UTF-16 in an order that only the bytes show.
bool isUtf16Name(const std::string& name);

}
