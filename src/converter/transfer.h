// Content transfer encodings, decoded with whatever the bytes still hold:
// nothing here fails.
#pragma once
#include <string>
#include <string_view>

namespace tolvek {

// Bytes outside the alphabet are passed over; padding may be missing or stand
// in the middle (two encodings run together).
std::string decodeBase64(std::string_view text);

// A "=" without two hex digits stays. In header words "_" is a blank.
std::string decodeQuotedPrintable(std::string_view text);
std::string decodeQWord(std::string_view text);

// By the name in Content-Transfer-Encoding; an unknown one leaves the bytes.
std::string decodeTransfer(std::string_view text, std::string_view encoding);

}
