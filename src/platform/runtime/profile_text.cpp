#include "platform/runtime/profile_text.h"

#include "platform/runtime/codepage932.h"
#include "platform/runtime/name_fold.h"

#include <algorithm>
#include <utility>

namespace tolvek {

namespace {

constexpr std::string_view kBlanks = " \t"; // U+3000 is text here
constexpr TextView kWideBlanks = u" \t";

template <class View> View trimmed(View text, View blanks)
{
    const std::size_t begin = text.find_first_not_of(blanks);
    if (begin == View::npos) return {};
    return text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

std::string_view trimmed(std::string_view bytes)
{
    return trimmed(bytes, kBlanks);
}

bool sameName(TextView a, TextView b)
{
    return foldedName(trimmed(a, kWideBlanks)) == foldedName(trimmed(b, kWideBlanks));
}

bool isQuoted(std::string_view value)
{
    return value.size() >= 2 && value.front() == value.back() &&
           (value.front() == '"' || value.front() == '\'');
}

std::string_view readForm(std::string_view value)
{
    value = trimmed(value);
    return isQuoted(value) ? value.substr(1, value.size() - 2) : value;
}

// A heading without its "]" counts all the same, up to the end of the line.
bool isHeading(std::string_view line)
{
    return trimmed(line).starts_with('[');
}

Text headingName(std::string_view line)
{
    const Text text = fromAnsi(trimmed(line).substr(1));
    return text.substr(0, text.find(u']'));
}

// The position of the "=" of a line with a key.
std::optional<std::size_t> equalsOf(std::string_view line)
{
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos || trimmed(line).starts_with(';')) return std::nullopt;
    return equals;
}

std::size_t lineLength(std::string_view bytes)
{
    return std::min(bytes.find_first_of("\r\n"), bytes.size());
}

std::size_t endLength(std::string_view bytes)
{
    if (bytes.starts_with("\r\n")) return 2;
    return bytes.empty() ? 0 : 1;
}

}

ProfileText::ProfileText(std::string_view bytes)
{
    while (!bytes.empty()) {
        const std::string_view content = bytes.substr(0, lineLength(bytes));
        bytes.remove_prefix(content.size());
        const std::string_view end = bytes.substr(0, endLength(bytes));
        bytes.remove_prefix(end.size());
        lines_.push_back({std::string(content), std::string(end)});
    }
}

std::optional<ProfileText::Range> ProfileText::findSection(TextView section) const
{
    auto isNamed = [&](const Line& line) {
        return isHeading(line.content) && sameName(headingName(line.content), section);
    };
    const auto heading = std::find_if(lines_.begin(), lines_.end(), isNamed);
    if (heading == lines_.end()) return std::nullopt;
    const auto next = std::find_if(heading + 1, lines_.end(),
                                   [](const Line& line) { return isHeading(line.content); });
    return Range{static_cast<std::size_t>(heading - lines_.begin()) + 1,
                 static_cast<std::size_t>(next - lines_.begin())};
}

std::optional<std::size_t> ProfileText::findKey(Range section, TextView key) const
{
    for (std::size_t at = section.begin; at < section.end; ++at) {
        const std::string_view line = lines_[at].content;
        const auto equals = equalsOf(line);
        if (equals && sameName(fromAnsi(line.substr(0, *equals)), key)) return at;
    }
    return std::nullopt;
}

std::optional<std::string> ProfileText::value(TextView section, TextView key) const
{
    const auto range = findSection(section);
    const auto at = range ? findKey(*range, key) : std::nullopt;
    if (!at) return std::nullopt;
    const std::string_view line = lines_[*at].content;
    return std::string(readForm(line.substr(*equalsOf(line) + 1)));
}

// Blanks outside would be lost at the next reading, and what is written behind
// the old ones would move on with every write.
bool ProfileText::setValue(TextView section, TextView key, std::string_view value)
{
    const auto range = findSection(section);
    const auto at = range ? findKey(*range, key) : std::nullopt;
    if (!at) {
        const std::size_t place = range ? placeForKey(*range) : addSection(section);
        insertLine(place, toAnsi(key) + "=" + std::string(trimmed(value)));
        return true;
    }
    const std::string_view line = lines_[*at].content;
    const std::size_t behindEquals = *equalsOf(line) + 1;
    const std::size_t begin = std::min(line.find_first_not_of(kBlanks, behindEquals), line.size());
    const std::string_view old = readForm(line.substr(begin));
    if (old == value || old == readForm(value)) return false;
    lines_[*at].content = std::string(line.substr(0, begin)) + std::string(trimmed(value));
    return true;
}

// Behind the last key, so that empty lines and comments stay with the next section.
std::size_t ProfileText::placeForKey(Range section) const
{
    std::size_t place = section.begin;
    for (std::size_t at = section.begin; at < section.end; ++at)
        if (equalsOf(lines_[at].content)) place = at + 1;
    return place;
}

std::size_t ProfileText::addSection(TextView section)
{
    insertLine(lines_.size(), '[' + toAnsi(section) + ']');
    return lines_.size();
}

void ProfileText::insertLine(std::size_t at, std::string content)
{
    const std::string end = lineEnd();
    if (at > 0 && lines_[at - 1].end.empty()) lines_[at - 1].end = end;
    lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(at), {std::move(content), end});
}

std::string ProfileText::lineEnd() const
{
    return lines_.empty() || lines_.front().end.empty() ? "\r\n" : lines_.front().end;
}

std::string ProfileText::bytes() const
{
    std::string all;
    for (const Line& line : lines_)
        (all += line.content) += line.end;
    return all;
}

}
