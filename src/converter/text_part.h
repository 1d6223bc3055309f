// One text part of a mail, decoded.
#pragma once
#include "converter/content_type.h"
#include "converter/header_fields.h"
#include "converter/uuencode.h"
#include "platform/runtime/text.h"

#include <string>
#include <string_view>
#include <vector>

namespace tolvek {

struct TextPart {
    std::string lines; // in code page 932, each with LF
    bool html = false;
    std::vector<UuencodedFile> files; // taken out of the text
};

TextPart readTextPart(const HeaderFields& fields, const ContentType& content,
                      std::string_view body);

// Whether a transfer encoding changes the bytes; and the bytes after decoding it.
bool isCoded(std::string_view encoding);
std::string decodeBody(std::string_view body, std::string_view encoding);

// Text with format=flowed, in which a line that ends in a blank continues in the next.
// Joins each paragraph to one line, removes the blank that was put before a line, and
// keeps the quote marks. deleteBlank: the blank at the end of a broken line isn't part
// of the text.
Text unflowed(TextView text, bool deleteBlank);

}
