// Collects what each part of a mail contributes to its text.
#pragma once
#include "converter/header_fields.h"

#include <string>
#include <string_view>

namespace tolvek {

// Plain lines in code page 932, each with LF.
struct Letter {
    std::string text;          // of the letter itself
    std::string attachedText;  // the first text among the attachments
    std::string attachedMails; // with their main fields
    std::string furtherParts;  // one line each
};

Letter readLetter(const HeaderFields& fields, std::string_view body);

}
