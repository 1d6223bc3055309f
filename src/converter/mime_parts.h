// The parts of a mail in parts, as pieces of its body.
#pragma once
#include "converter/content_type.h"
#include "converter/header_fields.h"

#include <string_view>
#include <vector>

namespace tolvek {

struct RawPart {
    std::string_view head, body;
};

// Head and body of a part or an attached mail; it may begin with the empty
// line at once. Blank lines in front of an attached mail are passed over.
RawPart splitPart(std::string_view part);

// By the boundary that was announced, else by the one that is there; the last
// part needs no closing line. Empty for what isn't in parts.
std::vector<std::string_view> partsOf(const HeaderFields& fields, const ContentType& content,
                                      std::string_view body);

}
