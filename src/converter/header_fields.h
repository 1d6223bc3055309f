// The header fields of one message or part, undecoded.
#pragma once
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tolvek {

// The name in a field line, without the colon and blanks before it; empty if the line
// is no field.
std::string_view fieldName(std::string_view line);

class HeaderFields {
public:
    // A longer field is cut: no mail needs it, and searching an endless one for
    // encoded words would take too long.
    static constexpr std::size_t kLongestField = 1 << 15;

    explicit HeaderFields(std::string_view head);

    // The first field of that name that isn't blank, else "". Folds are kept as LF in
    // the value: broken JIS returns to ASCII there. Names in lower case.
    std::string value(std::string_view name) const;
    std::vector<std::string> values(std::string_view name) const;

private:
    std::vector<std::pair<std::string, std::string>> fields_;
};

}
