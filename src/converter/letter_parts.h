// What the parts of a mail contribute to its text.
#pragma once
#include "converter/header_fields.h"
#include "platform/runtime/text.h"

#include <string_view>

namespace tolvek {

struct Letter {
    Text text;          // the letter's own
    Text attachedText;  // the first text among the attachments
    Text attachedMails; // with their fields
    Text furtherParts;  // a line each
};

Letter readLetter(const HeaderFields& fields, std::string_view body);

bool isBlankText(TextView text);

// A text that holds anything ends in a line end afterwards.
void endLine(Text& text);

}
