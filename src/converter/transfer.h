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

// A text under the label base64: up to the first line that isn't base64; from
// there on (a list's footer, or all of it under a wrong label) as it is. What
// decodes to no text wasn't encoded; wideText says that NULs are part of it.
std::string decodeBase64Text(std::string_view text, bool wideText);

// By the name in Content-Transfer-Encoding; an unknown one leaves the bytes.
std::string decodeTransfer(std::string_view text, std::string_view encoding);

bool isBase64Name(std::string_view encoding);

}
