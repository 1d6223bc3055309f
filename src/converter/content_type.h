// Content-Type and its parameters.
#pragma once
#include <map>
#include <string>
#include <string_view>

namespace tolvek {

struct ParameterValue {
    std::string bytes;
    std::string charset; // if the value states one
};

struct ContentType {
    std::string type; // "text/plain", lower case; empty if missing
    std::map<std::string, std::string>
        parameters; // names in lower case as written (name*0*), quotes undone

    std::string parameter(const std::string& name) const; // "" when missing

    // The same, joined and decoded if it came in the pieces of RFC 2231.
    ParameterValue fullParameter(const std::string& name) const;
};

ContentType parseContentType(std::string_view value);

}
