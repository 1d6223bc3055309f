// The decoding behind Mail_StrChange.
#pragma once
#include <cstddef>
#include <string>
#include <string_view>

namespace tolvek {

struct ChangedText {
    std::string ansi; // at most `limit` bytes, ending on a whole character
    int length = 0;   // in characters
};

// Code page 932 in and out. Encoded words are decoded in a text without line
// ends (a heading) alone: in a mail's text they are what the sender wrote.
// Then JIS escapes, then the single quote, which becomes ’.
ChangedText strChange(std::string_view ansi, std::size_t limit);

}
