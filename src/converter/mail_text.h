// The readable text of a mail.
//
// In a multipart mail it is every text part that belongs to the letter, in order:
// those without a file name; of several alternatives the plain one unless it is blank.
// HTML is converted to text. An attached text is used only if there is nothing else.
// Attached mails and delivery reports follow with their fields, then one line for each
// further part, including files inside the text.
//
// A mail without any text gets one line that says so: a mail with an empty text would
// not be archived at all.
#pragma once
#include "converter/header_fields.h"
#include "platform/runtime/text.h"

#include <string>

namespace tolvek {

inline constexpr TextView kNoText = u"（本文はありません）";

// Plain lines in code page 932, each with LF.
std::string mailText(const HeaderFields& fields, std::string_view body);

}
