// One text part of a mail, decoded.
#pragma once
#include "converter/content_type.h"
#include "converter/header_fields.h"
#include "converter/uuencode.h"

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

}
