// The readable text of a mail.
//
// Of a mail in parts it is every text part that belongs to the letter, in
// order: those without a file name, of several forms of one text the plain one
// unless it is blank. HTML is turned into text. An attached text stands in only
// where there is nothing else. Attached mails and delivery reports follow with
// their fields, then one line for each further part, files inside the text
// among them.
//
// A mail without any text gets one line that says so: a mail with an empty text
// would not be archived at all.
#pragma once
#include "converter/header_fields.h"
#include "platform/runtime/text.h"

#include <string>

namespace tolvek {

inline constexpr TextView kNoText = u"（本文はありません）";

// Plain lines in code page 932, each with LF.
std::string mailText(const HeaderFields& fields, std::string_view body);

}
