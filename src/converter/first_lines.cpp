#include "converter/first_lines.h"

#include "converter/ascii.h"
#include "converter/encoded_words.h"
#include "converter/header_fields.h"

#include <array>
#include <vector>

namespace tolvek {

namespace {

constexpr std::size_t kFirst = 5;
constexpr std::size_t kMost = 12; // a broken head may repeat a field without end
constexpr std::size_t kLongest = 200;

bool continues(std::string_view line)
{
    return line.starts_with(' ') || line.starts_with('\t');
}

bool isTelling(std::string_view line)
{
    const std::string name = lowerAscii(fieldName(line));
    return name == "from" || name == "subject" || name == "date";
}

// Each with its continuation lines, separated by LF as in a raw field value.
std::vector<std::string> tellingLines(std::string_view head)
{
    std::vector<std::string> lines;
    bool taken = false;
    while (!head.empty() && lines.size() < kMost) {
        const std::string_view line = takeLine(head);
        if (continues(line) && taken)
            lines.back() += "\n" + std::string(line);
        else if (!continues(line) && (taken = lines.size() < kFirst || isTelling(line)))
            lines.emplace_back(line);
    }
    return lines;
}

std::string shown(const std::string& raw)
{
    Text text = decodeEncodedWords(unfoldedText(raw.substr(0, HeaderFields::kLongestField)));
    for (char16_t& c : text)
        if (c < u' ') c = u' ';
    return toUtf8(Text(trim(text), 0, kLongest));
}

}

std::string firstLines(std::string_view head)
{
    std::string text;
    for (const std::string& line : tellingLines(head))
        text += (text.empty() ? "" : "\n") + shown(line);
    return text;
}

}
