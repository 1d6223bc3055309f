// Hostile HTML in pieces that its parser bears.
//
// The parser's own routines recurse over nested elements and open unclosed
// formatting anew in each paragraph, so depth and their product are limited.
// Real mails are one piece: a larger one is cut so that its tree takes no more
// room than the page.
#pragma once
#include <cstddef>
#include <string_view>

namespace tolvek {

inline constexpr std::size_t kHtmlPiece = 1u << 20; // bytes; a piece goes on to the next tag

// How much of the front may be parsed at once: all of it, or up to a tag.
std::size_t htmlPiece(std::string_view html);

}
