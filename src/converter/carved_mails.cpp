#include "converter/carved_mails.h"

#include "converter/head_lines.h"
#include "converter/mail_kind.h"

#include <algorithm>

namespace tolvek {

namespace {

// The length of the text at a line's beginning, up to the first binary byte.
std::size_t clearLength(std::string_view line)
{
    const auto end = std::find_if(line.begin(), line.end(), isBinaryByte);
    return static_cast<std::size_t>(end - line.begin());
}

// The text after the last binary byte of a line: the file's own lengths and numbers
// may precede a message on its line.
std::string_view clearEnd(std::string_view line)
{
    const auto last = std::find_if(line.rbegin(), line.rend(), isBinaryByte);
    return line.substr(static_cast<std::size_t>(line.rend() - last));
}

}

bool CarvedMails::beginsBlock(std::string_view line)
{
    if (lines_.lineBegin() < noBlockBefore_ || !isOwnField(line)) return false;
    const HeaderBlock block = blockAhead(lines_, 0, line);
    if (block.isOfMessage()) return true;
    // The fields inside this block make no message either; skipping them keeps the
    // cost linear.
    noBlockBefore_ = lines_.lineBegin() + block.bytes;
    return false;
}

bool CarvedMails::toNextBlock()
{
    while (hasLine_ || lines_.next(line_)) {
        hasLine_ = false;
        // clearEnd is a view of the same string, so only its size is used.
        line_.erase(0, line_.size() - clearEnd(line_).size());
        if (beginsBlock(line_)) return true;
    }
    return false;
}

bool CarvedMails::next(RawMail& mail)
{
    mail = {};
    if (!toNextBlock()) return false;
    MailGatherer gatherer(mail, lines_, MailFileKind::Message, false);
    gatherer.add(line_);
    while (lines_.next(line_)) {
        // Nothing ends the mail within its head: that block was recognised as a whole.
        const bool inText = gatherer.soFar().bodyBegin > 0;
        const std::size_t clear = clearLength(line_);
        hasLine_ = inText && (clear < line_.size() || beginsBlock(line_));
        if (!hasLine_) {
            gatherer.add(line_);
            continue;
        }
        // The text before a binary byte still belongs to this mail.
        if (clear > 0 && clear < line_.size()) gatherer.add(line_.substr(0, clear));
        return true;
    }
    return true;
}

bool holdsCarvedMail(const std::filesystem::path& path)
{
    RawMail mail;
    // A text file that isn't recognised as mail isn't searched, even if it quotes one.
    return isBinaryFile(path) && CarvedMails(path).next(mail);
}

}
