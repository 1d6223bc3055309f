// Content-Type and its parameters.
#pragma once
#include <map>
#include <string>
#include <string_view>

namespace tolvek {

struct ContentType {
    std::string type;                              // "text/plain", lower case; empty when not told
    std::map<std::string, std::string> parameters; // names in lower case, quotes undone

    std::string parameter(const std::string& name) const; // "" when missing
};

ContentType parseContentType(std::string_view value);

}
