// What the parts of a mail contribute to its text.
#pragma once
#include "converter/header_fields.h"

#include <string>
#include <string_view>

namespace tolvek {

// Plain lines in code page 932, each with LF.
struct Letter {
    std::string text;          // the letter's own
    std::string attachedText;  // the first text among the attachments
    std::string attachedMails; // with their fields
    std::string furtherParts;  // a line each
};

Letter readLetter(const HeaderFields& fields, std::string_view body);

}
