#include "converter/vcard_lines.h"

#include "converter/ascii.h"

#include <algorithm>
#include <utility>

namespace tolvek {

namespace {

constexpr std::string_view kBegin = "BEGIN:VCARD";
constexpr std::string_view kEnd = "END:VCARD";

// False at the end of the bytes.
bool takeLine(std::string_view& rest, std::string_view& line)
{
    if (rest.empty()) return false;
    const std::size_t end = std::min(rest.find_first_of("\r\n"), rest.size());
    line = rest.substr(0, end);
    rest.remove_prefix(end);
    // Longest first.
    for (const std::string_view lineEnd : {"\r\r\n", "\r\n", "\r", "\n"}) {
        if (!rest.starts_with(lineEnd)) continue;
        rest.remove_prefix(lineEnd.size());
        break;
    }
    return true;
}

bool isMark(std::string_view line, std::string_view mark)
{
    const std::string_view front = line.substr(0, mark.size());
    return equalsAscii(front, mark) && trimSpace(line.substr(front.size())).empty();
}

bool isFold(std::string_view line)
{
    return !line.empty() && (line.front() == ' ' || line.front() == '\t');
}

// "item1.EMAIL" and "EMAIL" are the same property.
std::string propertyName(std::string_view written)
{
    const std::size_t group = written.rfind('.');
    return lowerAscii(trimSpace(written.substr(group == std::string_view::npos ? 0 : group + 1)));
}

bool announcesAgent(std::string_view line)
{
    if (isFold(line)) return false;
    line = trimSpace(line);
    return line.ends_with(':') && propertyName(line.substr(0, line.find_first_of(";:"))) == "agent";
}

// Splits what precedes the value of a line at semicolons outside quotes.
std::vector<std::string_view> headPieces(std::string_view head)
{
    std::vector<std::string_view> pieces;
    bool quoted = false;
    std::size_t begin = 0;
    for (std::size_t at = 0; at < head.size(); ++at) {
        if (head[at] == '"') quoted = !quoted;
        if (head[at] != ';' || quoted) continue;
        pieces.push_back(head.substr(begin, at - begin));
        begin = at + 1;
    }
    pieces.push_back(head.substr(begin));
    return pieces;
}

VcardParameter parameterOf(std::string_view piece)
{
    const std::size_t sign = piece.find('=');
    const bool named = sign != std::string_view::npos;
    std::string value(trimSpace(named ? piece.substr(sign + 1) : piece));
    std::erase(value, '"');
    return {named ? lowerAscii(trimSpace(piece.substr(0, sign))) : std::string(), value};
}

void readHead(std::string_view head, VcardProperty& property)
{
    const auto pieces = headPieces(head);
    property.name = propertyName(pieces.front());
    for (auto piece = pieces.begin() + 1; piece != pieces.end(); ++piece)
        property.parameters.push_back(parameterOf(*piece));
}

// Collects one property line by line. Each byte is examined once, however many lines
// there are.
class Joined {
public:
    void add(std::string_view piece)
    {
        // Dropping the rest here bounds the memory of a property without end.
        text_ += piece.substr(0, VcardProperties::kLongest - text_.size());
        for (; colon_ == std::string::npos && scanned_ < text_.size(); ++scanned_) {
            if (text_[scanned_] == '"') quoted_ = !quoted_;
            if (text_[scanned_] == ':' && !quoted_) headEnds(scanned_);
        }
    }
    bool softBreak(std::string_view lastLine) const
    {
        const std::size_t last = lastLine.find_last_not_of(" \t");
        // Blanks after the "=" may have been added on the way.
        return softBreaks_ && last != std::string_view::npos && lastLine[last] == '=';
    }
    bool finish(VcardProperty& property)
    {
        if (colon_ == std::string::npos || property_.name.empty()) return false;
        property = std::move(property_);
        property.value = text_.substr(colon_ + 1);
        return true;
    }

private:
    void headEnds(std::size_t colon)
    {
        colon_ = colon;
        readHead(std::string_view(text_).substr(0, colon), property_);
        softBreaks_ = property_.encoding() == "quoted-printable";
    }

    std::string text_;
    std::size_t scanned_ = 0;
    std::size_t colon_ = std::string::npos;
    bool quoted_ = false;
    bool softBreaks_ = false;
    VcardProperty property_;
};

bool isVersion21(std::string_view card)
{
    std::string_view line;
    while (takeLine(card, line)) {
        const std::size_t colon = line.find(':');
        if (colon == std::string_view::npos) continue;
        if (propertyName(line.substr(0, std::min(line.find(';'), colon))) == "version")
            return trimSpace(line.substr(colon + 1)) == "2.1";
    }
    return false;
}

}

VcardNesting::Step VcardNesting::take(std::string_view line)
{
    // Only a BEGIN directly after an empty AGENT opens an inner card; any other means
    // that the card before was cut off.
    const bool agent = std::exchange(agentNext_, announcesAgent(line));
    if (isMark(line, kBegin)) {
        depth_ = agent && depth_ > 0 ? depth_ + 1 : 1;
        return depth_ == 1 ? Step::Opened : Step::Agent;
    }
    if (depth_ > 0 && isMark(line, kEnd)) return --depth_ == 0 ? Step::Closed : Step::Agent;
    // Empty lines between AGENT and BEGIN are allowed.
    agentNext_ = agentNext_ || (agent && trimSpace(line).empty());
    return depth_ > 1 ? Step::Agent : Step::Inside;
}

std::string VcardProperty::parameter(std::string_view parameterName) const
{
    for (const VcardParameter& given : parameters)
        if (given.name == parameterName) return given.value;
    return {};
}

bool VcardProperty::hasType(std::string_view type) const
{
    return std::any_of(parameters.begin(), parameters.end(), [&](const VcardParameter& given) {
        // Version 2.1 writes EMAIL;INTERNET;PREF, later versions TYPE=internet,pref.
        if (!given.name.empty() && given.name != "type") return false;
        const auto types = words(lowerAscii(given.value), ", ");
        return std::find(types.begin(), types.end(), type) != types.end();
    });
}

std::string VcardProperty::encoding() const
{
    for (const VcardParameter& given : parameters) {
        // Version 2.1 may omit the parameter's name; "b" is base64 in version 3.0.
        if (!given.name.empty() && given.name != "encoding") continue;
        const std::string written = lowerAscii(given.value);
        if (written == "quoted-printable") return written;
        if (written == "base64" || written == "b") return "base64";
    }
    return {};
}

bool VcardScanner::next(std::string_view& card)
{
    VcardNesting nesting;
    const char* begin = nullptr;
    std::string_view line;
    while (takeLine(rest_, line)) {
        const VcardNesting::Step step = nesting.take(line);
        if (step == VcardNesting::Step::Opened) begin = rest_.data();
        if (step != VcardNesting::Step::Closed) continue;
        card = std::string_view(begin, static_cast<std::size_t>(line.data() - begin));
        return true;
    }
    return false;
}

VcardProperties::VcardProperties(std::string_view card)
    : rest_(card), keepsBlanks_(isVersion21(card))
{
}

bool VcardProperties::nextLine(std::string_view& line)
{
    while (takeLine(rest_, line))
        if (nesting_.take(line) == VcardNesting::Step::Inside) return true;
    return false;
}

// Takes the next line if it continues the property that `line` belongs to.
bool VcardProperties::nextPiece(bool soft, std::string_view& line)
{
    std::string_view behind = rest_;
    std::string_view next;
    if (!takeLine(behind, next) || (!soft && !isFold(next))) return false;
    line = next;
    rest_ = behind;
    nesting_.take(line);
    return true;
}

bool VcardProperties::next(VcardProperty& property)
{
    for (std::string_view line; nextLine(line);) {
        Joined joined;
        joined.add(line);
        bool soft = joined.softBreak(line);
        while (nextPiece(soft, line)) {
            joined.add(soft ? "\n" : "");
            // Version 2.1 folds before a blank of the text; later versions insert one.
            joined.add(line.substr(soft || keepsBlanks_ ? 0 : 1));
            soft = joined.softBreak(line);
        }
        if (joined.finish(property)) return true;
    }
    return false;
}

}
