// The readable text of a mail: of a simple mail its body, of one in parts the
// first plain text that isn't an attachment, else the first text of any kind.
//
// A mail without any text gets one line that says so: a mail with an empty text
// would not be archived at all.
#pragma once
#include "converter/header_fields.h"
#include "platform/runtime/text.h"

namespace tolvek {

inline constexpr TextView kNoText = u"（本文はありません）";

// Line ends are as they came.
Text mailText(const HeaderFields& fields, std::string_view body);

}
