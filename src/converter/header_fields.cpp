#include "converter/header_fields.h"

#include "converter/ascii.h"

#include <algorithm>

namespace tolvek {

std::string_view fieldName(std::string_view line)
{
    const std::size_t colon = line.find(':');
    if (colon == std::string_view::npos) return {};
    std::string_view name = line.substr(0, colon);
    while (!name.empty() && (name.back() == ' ' || name.back() == '\t'))
        name.remove_suffix(1);
    // A name with blanks inside is a sentence with a colon.
    const bool printable =
        std::all_of(name.begin(), name.end(), [](char c) { return c > 0x20 && c < 0x7F; });
    return printable ? name : std::string_view();
}

namespace {

void append(std::string& value, std::string_view line)
{
    // A fold that would exceed the limit is left out as a whole.
    if (value.size() + line.size() < HeaderFields::kLongestField) value.append("\n").append(line);
}

}

HeaderFields::HeaderFields(std::string_view head)
{
    for (const std::string_view line : linesOf(head)) {
        const bool continuation = !line.empty() && (line[0] == ' ' || line[0] == '\t');
        if (continuation && !fields_.empty()) append(fields_.back().second, line);
        // Broken lines are ignored; they must not hide the fields after them.
        else if (const auto name = fieldName(line); !name.empty())
            fields_.emplace_back(lowerAscii(name),
                                 line.substr(line.find(':') + 1).substr(0, kLongestField));
    }
}

std::string HeaderFields::value(std::string_view name) const
{
    for (const auto& [fieldsName, text] : fields_)
        // An empty field before a filled one is common in broken mails.
        if (fieldsName == name && !trimSpace(std::string_view(text)).empty())
            return std::string(trimSpace(std::string_view(text)));
    return {};
}

std::vector<std::string> HeaderFields::values(std::string_view name) const
{
    std::vector<std::string> found;
    for (const auto& [fieldsName, text] : fields_)
        if (fieldsName == name) found.emplace_back(trimSpace(std::string_view(text)));
    return found;
}

}
