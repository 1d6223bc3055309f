// The names of charsets in mail, in any of the spellings met.
#pragma once
#include "converter/charset_guess.h"

#include <string>
#include <string_view>

namespace tolvek {

// Lower case, without quotes, blanks and a language ("euc-jp*ja").
std::string cleanLabel(std::string_view label);

// The functions below take cleaned names. Other: a charset that only ICU may know.
Charset charsetOf(const std::string& name);

// Charsets in which Japanese bytes make no text of any language. Others, of old
// systems, have letters where kana begin.
bool isWesternName(const std::string& name);

// Mail with this label contains the additional characters of windows-1252 too.
bool isLatin1Name(const std::string& name);

bool isWideName(const std::string& name);    // wider units than a byte, or any UTF
bool isEasternName(const std::string& name); // its characters are pairs of high bytes

// UTF-16 whose byte order only the bytes show.
bool isUtf16Name(const std::string& name);

}
