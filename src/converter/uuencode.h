// Files inside a text in uuencode: a line "begin 644 name", data lines, a line "end".
#pragma once
#include "platform/runtime/text.h"

#include <string>
#include <string_view>
#include <vector>

namespace tolvek {

bool isUuencodeName(std::string_view transferEncoding);

struct UuencodedFile {
    std::string name;
    std::size_t size = 0;
    std::string bytes;
};

// Whether a line begins like the first one of a file; a quick check for each text.
bool mayHoldUuencoded(std::string_view text);

// The text without its files; they are appended to `files`, without their bytes.
std::string withoutUuencoded(std::string_view text, std::vector<UuencodedFile>& files);

// The first file of a body, empty without one.
UuencodedFile uuencodedIn(std::string_view body);

}
