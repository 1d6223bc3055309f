#include "converter/head_lines.h"

#include "converter/ascii.h"
#include "converter/header_fields.h"
#include "converter/mail_date.h"

#include <algorithm>
#include <array>

namespace tolvek {

namespace {

constexpr char kEsc = 0x1B;
constexpr std::size_t kLongestHead = 1000;     // lines
constexpr std::size_t kLargestHead = 1u << 20; // bytes
constexpr std::size_t kLongestGap = 60;        // lines between the fields of a broken head
constexpr std::size_t kFoldedLength = 60;      // columns; programs fold lines about here

template <std::size_t N>
bool isOneOf(const std::array<std::string_view, N>& names, std::string_view name)
{
    return std::any_of(names.begin(), names.end(),
                       [&](std::string_view known) { return equalsAscii(known, name); });
}

bool isTrace(std::string_view name)
{
    static constexpr std::array<std::string_view, 6> kNames{
        "received", "message-id", "return-path", "mime-version", "delivered-to", "x-mailer"};
    return isOneOf(kNames, name);
}

bool isBlankLine(std::string_view line)
{
    return trimSpace(line).empty();
}

void count(HeaderBlock& block, std::string_view line)
{
    const std::string_view name = fieldName(line);
    if (isOwnField(line)) ++block.own;
    block.from = block.from || equalsAscii(name, "from");
    block.to = block.to || equalsAscii(name, "to");
    block.subject = block.subject || equalsAscii(name, "subject");
    block.addressed = block.to || block.subject || block.addressed || equalsAscii(name, "cc");
    block.trace = block.trace || isTrace(name);
    if (equalsAscii(name, "date"))
        // Strictly: a word such as "date: tomorrow" begins no mail.
        block.date = parseMailDate(line.substr(line.find(':') + 1)).has_value();
}

// Takes a line into the block; false if it ends the block.
bool take(HeaderBlock& block, std::string_view line)
{
    // A fold of blanks alone ends the block like an empty line: gateways leave such
    // lines.
    const bool fold = block.lines > 0 && !line.empty() && (line[0] == ' ' || line[0] == '\t');
    if (line.empty() || (fold && isBlankLine(line))) {
        block.ended = block.lines > 0;
        return false;
    }
    if (!fold && fieldName(line).empty() && !line.starts_with(">From ")) return false;
    if (!fold) count(block, line);
    ++block.lines;
    block.bytes += line.size() + 1;
    return true;
}

// "name=..." or "charset=...": a parameter of Content-Type whose fold lost its blank.
bool beginsWithParameter(std::string_view line)
{
    const std::size_t equals = line.find('=');
    return equals != std::string_view::npos && equals > 0 &&
           std::all_of(
               line.begin(), line.begin() + static_cast<std::ptrdiff_t>(equals),
               [](char c) { return isAsciiLetter(static_cast<unsigned char>(c)) || c == '-'; });
}

bool returnsToAscii(std::string_view escape)
{
    return escape.starts_with("(B") || escape.starts_with("(J") || escape.starts_with("(H");
}

}

bool isOwnField(std::string_view line)
{
    static constexpr std::array<std::string_view, 12> kNames{
        "from",        "to",     "subject",  "date",         "received",     "message-id",
        "return-path", "sender", "reply-to", "mime-version", "delivered-to", "cc"};
    const std::string_view name = fieldName(line);
    return !name.empty() && isOneOf(kNames, name);
}

bool isEnvelopeLine(std::string_view line)
{
    static constexpr std::array<std::string_view, 8> kCommands{
        "HELO ", "EHLO ", "LHLO ", "MAIL FROM:", "RCPT TO:", "TICK ", "VERB ", "+OK "};
    static constexpr std::array<std::string_view, 5> kWords{"DATA", "RSET", "NOOP", "QUIT", "+OK"};
    const std::string_view text = trimSpace(line);
    // An SMTP reply: three digits of which the first is 2 to 5, then a blank or "-".
    const bool answer = text.size() >= 4 && text.find_first_not_of("0123456789") == 3 &&
                        text[0] >= '2' && text[0] <= '5' && (text[3] == ' ' || text[3] == '-');
    return answer || isOneOf(kWords, text) ||
           std::any_of(kCommands.begin(), kCommands.end(), [&](std::string_view command) {
               return equalsAscii(text.substr(0, command.size()), command);
           });
}

HeaderBlock blockAhead(LineSource& lines, std::size_t index, std::string_view first)
{
    HeaderBlock block;
    if (!first.empty() && !take(block, first)) return block;
    while (block.lines < kLongestHead && block.bytes < kLargestHead) {
        const std::string* line = lines.ahead(index++);
        // The end of the file ends a block too: the mail may have no text.
        if (line == nullptr) block.ended = block.lines > 0;
        if (line == nullptr || !take(block, *line)) return block;
    }
    return block;
}

std::size_t linesToOwnField(LineSource& lines)
{
    for (std::size_t index = 0; index < kLongestGap; ++index) {
        const std::string* line = lines.ahead(index);
        if (line == nullptr || line->empty()) return 0;
        if (isOwnField(*line)) return index + 1;
    }
    return 0;
}

bool isBrokenFold(std::string_view before, std::string_view line)
{
    // Only a continuation begins with an encoded word, JIS, an address in brackets or
    // 8-bit text. Anything else counts as one only if the line before looks
    // unfinished.
    if (line.starts_with("=?") || line[0] == kEsc || line[0] == '<' ||
        static_cast<unsigned char>(line[0]) >= 0x80)
        return true;
    const std::string_view text = trimSpace(before);
    return text.size() >= kFoldedLength || text.ends_with(",") || text.ends_with(";") ||
           text.ends_with(":") || text.ends_with("?=") || beginsWithParameter(line);
}

bool isCutJis(std::string_view before, std::string_view line)
{
    // The line before ended within JIS, and this one returns to ASCII without having
    // left it.
    const std::size_t next = line.find(kEsc);
    if (next == std::string_view::npos || !returnsToAscii(line.substr(next + 1))) return false;
    const std::size_t last = before.rfind(kEsc);
    return last != std::string_view::npos && before.substr(last + 1).starts_with("$");
}

}
