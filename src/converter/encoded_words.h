// Encoded words of header fields (RFC 2047), as they were really sent.
//
// Found wherever they stand: inside quotes and comments, without blanks
// around, with raw blanks in Q, without padding or "?=". Adjacent words of one
// charset and encoding are decoded word by word, their bytes joined and
// converted once, which mends characters that were split between two words; so
// is base64 that was cut inside one of its groups.
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
    std::string coded;      // the content as it stands
    std::size_t length = 0; // in the text; 0 when no word begins there
};
EncodedWord encodedWordAt(TextView text, std::size_t position);
// Of a word that has its end mark, else 0.
std::size_t closedWordLength(TextView text, std::size_t position);

// Raw field value (folds as LF) to text without folds, words still encoded.
Text unfoldedText(std::string_view rawValue);

}
