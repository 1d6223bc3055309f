// Code page 932 in both directions, as on Windows (without best-fit mappings).
//
// ICU's ibm-943_P15A-2003 converts the double bytes. Bytes below 80h and the five
// single bytes that it maps differently are handled here.
#pragma once
#include "platform/runtime/text.h"

#include <string>
#include <string_view>

namespace tolvek {

// A character without a form in the code page becomes 〓 (U+3013), so that its place
// stays visible. The JIS-style twins (U+301C, 2016, 2212, 00A2, 00A3, 00AC) become
// their Windows forms. Every source character gives at least one byte.
std::string toAnsi(TextView text);

// Invalid bytes (a lone lead byte, an unassigned code) become U+30FB.
Text fromAnsi(std::string_view bytes);

// The first byte of a character of two bytes.
constexpr bool isLeadByte(unsigned byte)
{
    return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
}
// The second one.
constexpr bool isTrailByte(unsigned byte)
{
    return byte >= 0x40 && byte <= 0xFC && byte != 0x7F;
}

// True if the code page has every character, with no replacement needed.
bool fitsAnsi(TextView text);

// The Windows form of a twin; any other character unchanged.
char16_t ownForm(char16_t c);

// The text with each character that the code page lacks replaced as toAnsi would.
Text keptToAnsi(TextView text);

// The longest whole-character prefix of `text` with at most `limit` bytes.
std::string ansiPrefix(TextView text, std::size_t limit);

}
