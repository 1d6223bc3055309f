#include "converter/mail_file.h"

#include "converter/ascii.h"
#include "converter/header_fields.h"
#include "converter/separator_line.h"

#include <algorithm>
#include <array>

namespace tolvek {

namespace {

constexpr std::string_view kMark = "\xEF\xBB\xBF";
constexpr std::size_t kBeginning = 1 << 16;

bool isMailField(std::string_view name)
{
    static constexpr std::array<std::string_view, 12> kNames{
        "from",        "to",     "subject",  "date",         "received",     "message-id",
        "return-path", "sender", "reply-to", "mime-version", "delivered-to", "cc"};
    const std::string lower = lowerAscii(name);
    return std::find(kNames.begin(), kNames.end(), lower) != kNames.end();
}

// A head that can be recognised: fields from the first line on, one of them a
// mail's own, no NUL before its end.
bool isMessageHead(std::string_view text)
{
    bool known = false;
    bool first = true;
    for (std::string_view line : linesOf(text)) {
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        if (line.empty() || line.find('\0') != std::string_view::npos) return known && line.empty();
        if (!first && (line[0] == ' ' || line[0] == '\t')) continue;
        const std::string_view name = fieldName(line);
        if (name.empty()) return known && !first;
        known = known || isMailField(name);
        first = false;
    }
    return known;
}

std::string readBeginning(const std::filesystem::path& path)
{
    OpenFile file(path, OpenFile::Mode::Read);
    std::string bytes(kBeginning, '\0');
    std::size_t size = 0;
    while (const std::size_t got = file.read(bytes.data() + size, bytes.size() - size)) {
        size += got;
        if (size == bytes.size()) break;
    }
    bytes.resize(size);
    return bytes;
}

// The reading takes a lone CR for a line end, so the recognition does too.
std::string withLf(std::string_view text)
{
    std::string lines(text);
    if (lines.find('\n') == std::string::npos) std::replace(lines.begin(), lines.end(), '\r', '\n');
    return lines;
}

}

MailFileKind recognise(std::string_view beginning)
{
    if (beginning.empty()) return MailFileKind::Empty;
    std::string text = withLf(beginning);
    if (text.starts_with(kMark)) text.erase(0, kMark.size());
    text.erase(0, std::min(text.find_first_not_of("\r\n"), text.size()));
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view first = std::string_view(text).substr(0, end);
    if (isSeparatorLine(first)) return MailFileKind::Mbox;
    const std::string_view rest = std::string_view(text).substr(std::min(end + 1, text.size()));
    if (first.starts_with("From ") && isMessageHead(rest)) return MailFileKind::Mbox;
    return isMessageHead(text) ? MailFileKind::Message : MailFileKind::Nothing;
}

MailFileKind recogniseFile(const std::filesystem::path& path)
{
    return fileExists(path) ? recognise(readBeginning(path)) : MailFileKind::Nothing;
}

// Puts lines into head or body. A head ends at an empty line, or at a line
// that can't belong to it, which is then the first one of the body.
class MailFile::Gatherer {
public:
    Gatherer(RawMail& mail, bool mbox) : mail_(mail), mbox_(mbox) {}

    void add(std::string_view line)
    {
        if (inHead_ && line.empty())
            inHead_ = false;
        else if (inHead_ && belongsToHead(line))
            append(mail_.head, line);
        else
            addToBody(line);
    }

    // The empty line before a separator belongs to the separator.
    void dropLastEmptyLine()
    {
        if (mail_.body.ends_with("\n\n") || mail_.body == "\n") mail_.body.pop_back();
    }

private:
    bool belongsToHead(std::string_view line) const
    {
        const bool continuation = (line[0] == ' ' || line[0] == '\t') && !mail_.head.empty();
        return continuation || !fieldName(line).empty() || line.starts_with(">From ");
    }

    void addToBody(std::string_view line)
    {
        inHead_ = false;
        append(mail_.body, mbox_ ? unstuffed(line) : line);
    }

    void append(std::string& part, std::string_view line)
    {
        if (mail_.head.size() + mail_.body.size() + line.size() >= kLargestMail) return;
        part.append(line).push_back('\n');
    }

    RawMail& mail_;
    bool mbox_;
    bool inHead_ = true;
};

MailFile::MailFile(const std::filesystem::path& path, MailFileKind kind)
    : lines_(path), mbox_(kind == MailFileKind::Mbox)
{
    ended_ = kind == MailFileKind::Nothing || kind == MailFileKind::Empty;
}

bool MailFile::readFirstLine()
{
    started_ = true;
    while (lines_.next(line_)) {
        if (line_.starts_with(kMark)) line_.erase(0, kMark.size());
        if (!line_.empty()) return true;
    }
    return false;
}

bool MailFile::next(RawMail& mail)
{
    mail = {};
    if (ended_ || (!started_ && !readFirstLine())) return false;
    Gatherer gatherer(mail, mbox_);
    if (mbox_)
        mail.separator = line_;
    else
        gatherer.add(line_);
    bool emptyBefore = false;
    while (lines_.next(line_)) {
        if (mbox_ && emptyBefore && isSeparatorLine(line_)) {
            gatherer.dropLastEmptyLine();
            return true;
        }
        emptyBefore = line_.empty();
        gatherer.add(line_);
    }
    ended_ = true;
    return true;
}

}
