// Encoded words of header fields (RFC 2047), as they were really sent.
//
// They are found anywhere: inside quotes and comments, without blanks around, with raw
// blanks in Q, without padding or "?=". Adjacent words of one charset and encoding are
// joined as bytes and converted once, which repairs characters that were split between
// two words, and base64 that was cut inside a group.
#pragma once
#include "platform/runtime/text.h"

#include <cstddef>
#include <string>

namespace tolvek {

Text decodeEncodedWords(TextView text);

struct EncodedWord {
    std::string charset;
    bool base64 = false;
    std::string bytes;      // transfer decoding undone, charset not
    std::string coded;      // the content, still encoded
    std::size_t length = 0; // in the text; 0 when no word begins there
};
EncodedWord encodedWordAt(TextView text, std::size_t position);
// The length of a word that has its end mark, else 0.
std::size_t closedWordLength(TextView text, std::size_t position);

// Converts a raw field value (folds as LF) to text without folds; encoded words stay.
Text unfoldedText(std::string_view rawValue);

}
