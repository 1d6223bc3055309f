#include "converter/mail_file.h"

#include "converter/ascii.h"
#include "converter/head_lines.h"
#include "converter/mail_end.h"

namespace tolvek {

MailFile::MailFile(const std::filesystem::path& path, MailFileKind kind) : lines_(path), kind_(kind)
{
    ended_ = kind == MailFileKind::Nothing || kind == MailFileKind::Empty;
}

bool MailFile::readFirstLine()
{
    started_ = true;
    if (!lines_.next(line_)) return false;
    if (line_.starts_with(kByteOrderMark)) line_.erase(0, kByteOrderMark.size());
    return toNextMail();
}

// Skips what separates two mails, or precedes the first: empty lines, a line with a
// dot, SMTP commands.
bool MailFile::toNextMail()
{
    for (;;) {
        const bool command = kind_ == MailFileKind::Message && isEnvelopeLine(line_);
        envelope_ = envelope_ || command;
        const bool between = line_ == "." || trimSpace(std::string_view(line_)).empty();
        if (!command && !between) return true;
        if (!lines_.next(line_)) return false;
    }
}

// A separator with nothing after it is no mail.
bool MailFile::next(RawMail& mail)
{
    while (gather(mail))
        if (!mail.head.empty() || !trimSpace(std::string_view(mail.body)).empty()) return true;
    return false;
}

bool MailFile::gather(RawMail& mail)
{
    mail = {};
    if (!ended_) ended_ = started_ ? !toNextMail() : !readFirstLine();
    if (ended_) return false;
    MailGatherer gatherer(mail, lines_, kind_, envelope_);
    MailEnd end(lines_, kind_, envelope_, noBlockBefore_);
    // Kept for its date and sender, which serve if the head has none.
    if (beginsLikeSeparator(line_))
        mail.separator = line_;
    else
        gatherer.add(line_);
    std::string before = std::move(line_);
    while (lines_.next(line_)) {
        if (end.isBefore(line_, before, gatherer.soFar())) {
            if (kind_ == MailFileKind::Mbox) gatherer.dropLastEmptyLine();
            return true;
        }
        gatherer.add(line_);
        std::swap(before, line_);
    }
    ended_ = true;
    return true;
}

}
