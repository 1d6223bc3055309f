// Decodes content transfer encodings as far as the bytes allow; nothing here fails.
#pragma once
#include <string>
#include <string_view>

namespace tolvek {

// Bytes outside the alphabet are skipped; padding may be missing or in the middle (two
// encodings joined).
std::string decodeBase64(std::string_view text);

// A "=" without two hex digits stays. In header words "_" is a blank.
std::string decodeQuotedPrintable(std::string_view text);
std::string decodeQWord(std::string_view text);

// A text labelled base64, up to the first line that isn't base64; the rest (a list's
// footer, or all of it under a wrong label) is unchanged. Bytes that decode to no text
// weren't encoded; wideText means that NULs are valid.
std::string decodeBase64Text(std::string_view text, bool wideText);

// By the name in Content-Transfer-Encoding; an unknown one leaves the bytes.
std::string decodeTransfer(std::string_view text, std::string_view encoding);

bool isBase64Name(std::string_view encoding);

}
