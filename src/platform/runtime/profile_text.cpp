#include "platform/runtime/profile_text.h"

#include "platform/runtime/codepage932.h"
#include "platform/runtime/name_fold.h"

#include <algorithm>
#include <utility>

namespace tolvek {

namespace {

constexpr std::string_view kByteBlanks = " \t"; // U+3000 counts as text here
constexpr TextView kWideBlanks = u" \t";

template <class View> View trimmed(View text, View blanks)
{
    const std::size_t begin = text.find_first_not_of(blanks);
    if (begin == View::npos) return {};
    return text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

std::string_view trimmed(std::string_view bytes)
{
    return trimmed(bytes, kByteBlanks);
}

Text foldedKey(TextView name)
{
    return foldedName(trimmed(name, kWideBlanks));
}

bool isAscii(std::string_view bytes)
{
    return std::all_of(bytes.begin(), bytes.end(), [](char c) { return (c & 0x80) == 0; });
}

bool isSameAscii(std::string_view name, TextView folded)
{
    return std::equal(
        name.begin(), name.end(), folded.begin(), folded.end(),
        [](char c, char16_t f) { return (c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c) == f; });
}

// Most lines of a long file are ASCII and are compared without decoding.
bool isNamed(std::string_view name, TextView folded)
{
    name = trimmed(name);
    if (isAscii(name)) return isSameAscii(name, folded);
    return foldedKey(fromAnsi(name)) == folded;
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

// A heading without "]" counts too; its name extends to the end of the line.
bool isHeading(std::string_view line)
{
    return trimmed(line).starts_with('[');
}

Text headingName(std::string_view line)
{
    const Text text = fromAnsi(trimmed(line).substr(1));
    return text.substr(0, text.find(u']'));
}

// The position of the "=" in a line with a key.
std::optional<std::size_t> equalsOf(std::string_view line)
{
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos || trimmed(line).starts_with(';')) return std::nullopt;
    return equals;
}

constexpr bool isEnd(char c)
{
    return c == '\r' || c == '\n';
}

// Iterates over the lines, which end at CR LF, CR or LF.
class Lines {
public:
    Lines(std::string_view bytes, std::size_t begin, std::size_t end)
        : bytes_(bytes.substr(0, end)), next_(begin)
    {
    }
    bool step()
    {
        if (next_ >= bytes_.size()) return false;
        begin_ = next_;
        end_ = std::min(nextOf('\r', return_), nextOf('\n', feed_));
        next_ = end_ + (bytes_.substr(end_, 2) == "\r\n" ? 2 : 1);
        return true;
    }
    std::size_t begin() const { return begin_; }
    std::size_t end() const { return end_; } // of the content, without the line end
    std::size_t next() const { return std::min(next_, bytes_.size()); }
    std::string_view content() const { return bytes_.substr(begin_, end_ - begin_); }

private:
    // Each kind of line end is searched for only when the last one found has been
    // passed. Otherwise a file without one kind would be searched to its end for
    // every line.
    std::size_t nextOf(char c, std::size_t& found) const
    {
        if (found < begin_ || found == kUnknown)
            found = std::min(bytes_.find(c, begin_), bytes_.size());
        return found;
    }

    static constexpr std::size_t kUnknown = std::string_view::npos;
    std::string_view bytes_;
    std::size_t begin_ = 0, end_ = 0, next_;
    std::size_t return_ = kUnknown, feed_ = kUnknown;
};

}

ProfileText::ProfileText(std::string bytes) : bytes_(std::move(bytes))
{
    findSections();
}

void ProfileText::findSections()
{
    sections_.clear();
    Range* open = nullptr;
    for (Lines lines(bytes_, 0, bytes_.size()); lines.step();) {
        if (!isHeading(lines.content())) continue;
        if (open) open->end = lines.begin();
        // Of two sections with one name the first counts; the second one's lines
        // belong to none.
        const auto [at, isFirst] = sections_.try_emplace(foldedKey(headingName(lines.content())),
                                                         Range{lines.next(), bytes_.size()});
        open = isFirst ? &at->second : nullptr;
    }
}

std::optional<ProfileText::Range> ProfileText::findSection(TextView section) const
{
    const auto found = sections_.find(foldedKey(section));
    return found == sections_.end() ? std::nullopt : std::optional(found->second);
}

std::optional<ProfileText::Range> ProfileText::findKey(Range section, TextView key) const
{
    const Text folded = foldedKey(key);
    for (Lines lines(bytes_, section.begin, section.end); lines.step();) {
        const auto equals = equalsOf(lines.content());
        if (equals && isNamed(lines.content().substr(0, *equals), folded))
            return Range{lines.begin(), lines.end()};
    }
    return std::nullopt;
}

std::string_view ProfileText::in(Range range) const
{
    return std::string_view(bytes_).substr(range.begin, range.end - range.begin);
}

std::optional<std::string> ProfileText::value(TextView section, TextView key) const
{
    const auto range = findSection(section);
    const auto found = range ? findKey(*range, key) : std::nullopt;
    if (!found) return std::nullopt;
    const std::string_view line = in(*found);
    return std::string(readForm(line.substr(*equalsOf(line) + 1)));
}

// The value is trimmed: outer blanks would be lost at the next reading. The blanks
// before the old value are kept, so an untrimmed value would move further to the
// right with every write.
bool ProfileText::setValue(TextView section, TextView key, std::string_view value)
{
    const auto range = findSection(section);
    const auto found = range ? findKey(*range, key) : std::nullopt;
    if (!found) {
        const std::size_t place = range ? placeForKey(*range) : addSection(section);
        insertLine(place, toAnsi(key) + "=" + std::string(trimmed(value)));
        findSections();
        return true;
    }
    const std::string_view line = in(*found);
    const std::size_t behindEquals = *equalsOf(line) + 1;
    const std::size_t begin =
        std::min(line.find_first_not_of(kByteBlanks, behindEquals), line.size());
    const std::string_view old = readForm(line.substr(begin));
    // Equal as a reader gets it, with or without quotes.
    if (old == value || old == readForm(value)) return false;
    bytes_.replace(found->begin + begin, line.size() - begin, trimmed(value));
    findSections();
    return true;
}

// After the last key, so that empty lines and comments stay with the next section.
std::size_t ProfileText::placeForKey(Range section) const
{
    std::size_t place = section.begin;
    for (Lines lines(bytes_, section.begin, section.end); lines.step();)
        if (equalsOf(lines.content())) place = lines.next();
    return place;
}

std::size_t ProfileText::addSection(TextView section)
{
    return insertLine(bytes_.size(), '[' + toAnsi(section) + ']');
}

std::size_t ProfileText::insertLine(std::size_t at, const std::string& content)
{
    const std::string end = lineEnd();
    std::string line = content + end;
    // A last line without a line end gets one first.
    if (at > 0 && !isEnd(bytes_[at - 1])) line.insert(0, end);
    bytes_.insert(at, line);
    return at + line.size();
}

// The line end of the first line.
std::string ProfileText::lineEnd() const
{
    const std::size_t at = bytes_.find_first_of("\r\n");
    if (at == std::string::npos) return "\r\n";
    return bytes_.substr(at, bytes_.compare(at, 2, "\r\n") == 0 ? 2 : 1);
}

}
