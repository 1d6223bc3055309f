// The decoding that Mail_StrChange does.
#pragma once
#include <cstddef>
#include <string>
#include <string_view>

namespace tolvek {

struct ChangedText {
    std::string ansi; // at most `limit` bytes, ending on a whole character
    int length = 0;   // in characters
};

// Code page 932 in and out. Encoded words are decoded only in a text without line ends
// (a heading): in the text of a mail they are what the sender wrote. Then JIS escapes
// are decoded, then the single quote becomes ’.
ChangedText strChange(std::string_view ansi, std::size_t limit);

}
