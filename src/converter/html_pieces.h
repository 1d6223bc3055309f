// Cuts hostile HTML into pieces that the parser can handle.
//
// The parser recurses over nested elements and reopens unclosed formatting in each
// paragraph, so the depth and the sum of open elements are limited. Real mails are one
// piece; a larger one is cut so that its tree takes no more memory than the page.
#pragma once
#include <cstddef>
#include <string_view>

namespace tolvek {

inline constexpr std::size_t kHtmlPiece = 1u << 20; // bytes; a piece extends to the next tag

// How much of the front may be parsed at once: all of it, or up to a tag.
std::size_t htmlPiece(std::string_view html);

}
