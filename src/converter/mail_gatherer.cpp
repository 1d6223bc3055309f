#include "converter/mail_gatherer.h"

#include "converter/ascii.h"
#include "converter/head_lines.h"
#include "converter/header_fields.h"
#include "converter/separator_line.h"

#include <algorithm>

namespace tolvek {

namespace {

// A large part grows by a quarter: doubling would take more memory than the mail.
void grow(std::string& part, std::size_t size)
{
    constexpr std::size_t kLarge = 4u << 20;
    if (size > part.capacity() && size > kLarge)
        part.reserve(std::min(size + size / 4, MailGatherer::kLargestMail));
}

}

void MailGatherer::add(std::string_view line)
{
    if (!inHead_) return addToBody(line);
    addToHead(std::string(line));
    if (headAhead_ > 0) --headAhead_;
}

void MailGatherer::dropLastEmptyLine()
{
    std::string_view lines = mail_.body;
    if (!lines.empty()) lines.remove_suffix(1);
    const std::size_t begin = lines.rfind('\n') + 1; // npos + 1 is 0
    if (trimSpace(lines.substr(begin)).empty()) mail_.body.resize(begin);
}

void MailGatherer::addToHead(std::string line)
{
    // NULs are left by crashed file systems, and no field has any.
    std::erase(line, '\0');
    if (line.empty()) {
        inHead_ = false;
        bodyBegin_ = lines_.position();
    } else if (isCutJis(lastHeadLine(), line)) {
        // Its LF: the two halves are one line again.
        mail_.head.pop_back();
        append(mail_.head, line);
    } else if (belongsToHead(line)) {
        append(mail_.head, line);
    } else {
        takeBrokenLine(line);
    }
}

void MailGatherer::takeBrokenLine(const std::string& line)
{
    // Counted once for all lines up to the next own field; 1 means that there is none,
    // and that the text has begun without an empty line.
    if (headAhead_ == 0) headAhead_ = linesToOwnField(lines_) + 1;
    const bool blank = trimSpace(std::string_view(line)).empty();
    if (headAhead_ == 1) {
        inHead_ = false;
        // A blank line is the end of the head; any other belongs to the text.
        bodyBegin_ = blank ? lines_.position() : lines_.lineBegin();
        if (!blank) addToBody(line);
    } else if (!blank && !mail_.head.empty() && isBrokenFold(lastHeadLine(), line)) {
        append(mail_.head, " " + line);
    }
}

bool MailGatherer::belongsToHead(std::string_view line) const
{
    const bool blank = trimSpace(line).empty();
    const bool continuation = (line[0] == ' ' || line[0] == '\t') && !mail_.head.empty() && !blank;
    // ">From " is a separator that a gateway escaped within a head.
    return continuation || !fieldName(line).empty() || line.starts_with(">From ");
}

std::string_view MailGatherer::lastHeadLine() const
{
    const std::string_view head = mail_.head;
    if (head.empty()) return {};
    const std::string_view lines = head.substr(0, head.size() - 1);
    return lines.substr(lines.rfind('\n') + 1); // npos + 1 is 0
}

void MailGatherer::addToBody(std::string_view line)
{
    // SMTP doubles a dot at the beginning of a line.
    if (envelope_ && line.starts_with("..")) line.remove_prefix(1);
    append(mail_.body, mbox_ ? unstuffed(line) : line);
}

void MailGatherer::append(std::string& part, std::string_view line)
{
    // Later lines are still read, so that the next mail is found.
    if (mail_.head.size() + mail_.body.size() + line.size() >= kLargestMail) return;
    grow(part, part.size() + line.size() + 1);
    part.append(line).push_back('\n');
}

}
