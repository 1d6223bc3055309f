// The fields of one message or part, raw.
#pragma once
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tolvek {

// The name of a field line, without the colon and blanks before it; empty when
// the line is no field.
std::string_view fieldName(std::string_view line);

class HeaderFields {
public:
    // What a field holds beyond is left out: no mail means it, and looking for
    // words in an endless one would take for ever.
    static constexpr std::size_t kLongestField = 1 << 15;

    explicit HeaderFields(std::string_view head);

    // The first field of that name that holds anything, else "". Folds stand
    // as LF in the value: a broken JIS value returns to ASCII there.
    std::string value(std::string_view name) const;
    std::vector<std::string> values(std::string_view name) const;

private:
    std::vector<std::pair<std::string, std::string>> fields_;
};

}
