// Splits the body of a multipart mail into its parts.
#pragma once
#include "converter/content_type.h"
#include "converter/header_fields.h"

#include <string_view>
#include <vector>

namespace tolvek {

struct RawPart {
    std::string_view head, body;
};

// Head and body of a part or an attached mail; it may begin with the empty line.
RawPart splitPart(std::string_view part);

// By the declared boundary, else by the one found in the body; the last part needs no
// closing line. Empty if the mail isn't multipart.
std::vector<std::string_view> partsOf(const HeaderFields& fields, const ContentType& content,
                                      std::string_view body);

}
