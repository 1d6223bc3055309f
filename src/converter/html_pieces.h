// Hostile HTML in pieces that its parser bears.
//
// The parser's own routines recurse over nested elements and open unclosed
// formatting anew in each paragraph, so depth and their product are limited.
// Real mails are one piece.
#pragma once
#include <string_view>

namespace tolvek {

// How much of the front may be parsed at once: all of it, or up to a tag.
std::size_t htmlPiece(std::string_view html);

}
