// One line for each part of a mail besides its text: name, type and size.
#pragma once
#include "converter/content_type.h"
#include "converter/header_fields.h"
#include "platform/runtime/text.h"

#include <string_view>

namespace tolvek {

// The name by Content-Disposition, else by Content-Type; RFC 2231, encoded words and
// raw bytes are decoded, folders removed. Empty if there is none.
Text partName(const HeaderFields& fields, const ContentType& content);

// The size in bytes after transfer decoding.
std::size_t decodedSize(std::string_view body, std::string_view encoding);

// （添付: name、type、12,345 バイト）
Text furtherPartLine(TextView name, std::string_view type, std::size_t size);

}
