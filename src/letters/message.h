// A letter as an Internet message, in a form that every mail program reads, and this
// program's own converter to the same row of the store:
//
// - an empty line is written three times, since the reader keeps one of three;
// - what the letter never had (設定無し) is left out;
// - the text is UTF-8, in base64 if a line of it might be taken for something else ("From ",
//   a header, a lone dot).
//
// The store doesn't say in which zone the sender's clock was; it is given as that of
// Japan. A stored date that is no date is written as the nearest one, and as stored in the
// field X-Tolvek-Date.
#pragma once
#include "letters/letter.h"

#include <string>

namespace tolvek {

// Header, empty line, body; LF line ends.
std::string asMessage(const Letter& letter);

// The same with the line before it that separates the messages of an mbox, and the empty
// line after it.
std::string asMboxEntry(const Letter& letter);

}
