// HTML as readable text: paragraphs, lists, rows of tables, links with their
// address, quotes marked; nothing of styles and scripts, nothing fetched.
#pragma once
#include "platform/runtime/text.h"

#include <string_view>

namespace tolvek {

Text htmlText(TextView html);

// The charset that the page itself names; empty without one.
std::string charsetOfHtml(std::string_view bytes);

}
