// Code page 932, both ways, as Windows has it (no best fit).
//
// ICU's ibm-943_P15A-2003 does the double bytes; bytes below 80h and the five
// single bytes that it treats otherwise are handled here.
#pragma once
#include "platform/runtime/text.h"

#include <string>
#include <string_view>

namespace tolvek {

// A character with no form in the code page becomes 〓 (U+3013), so that its
// place stays visible. The JIS-style twins (U+301C, 2016, 2212, 00A2, 00A3,
// 00AC) go to their Windows forms. Every source character gives at least one byte.
std::string toAnsi(TextView text);

// Bytes that are no character (a lone lead byte, an unassigned code) become U+30FB.
Text fromAnsi(std::string_view bytes);

// True when every character has a form in the code page as it stands.
bool fitsAnsi(TextView text);

// The Windows form of a twin; any other character as it is.
char16_t ownForm(char16_t c);

// The text with every character that has no form replaced as toAnsi would.
Text keptToAnsi(TextView text);

// The longest whole-character prefix of `text` with at most `limit` bytes.
std::string ansiPrefix(TextView text, std::size_t limit);

}
