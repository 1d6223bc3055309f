#include "converter/mail_end.h"

#include "converter/ascii.h"
#include "converter/content_type.h"
#include "converter/head_lines.h"
#include "converter/header_fields.h"
#include "converter/separator_line.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace tolvek {

namespace {

constexpr std::size_t kLookBack = 4096; // bytes of text in which a part's head is looked for

ContentType contentOf(std::string_view head)
{
    return parseContentType(HeaderFields(head).value("content-type"));
}

// The last paragraph of the body, without the empty lines after it.
std::string_view lastParagraph(std::string_view body)
{
    if (body.size() > kLookBack) body.remove_prefix(body.size() - kLookBack);
    while (body.ends_with("\n"))
        body.remove_suffix(1);
    const std::size_t begin = body.rfind("\n\n");
    return begin == std::string_view::npos ? body : body.substr(begin + 2);
}

bool holdsMessage(const std::string& type)
{
    return type.starts_with("message/") || type == "application/mbox";
}

// Whether the body ends in the head of an attached mail's part: boundary, fields,
// empty line.
bool endsInPartOfMessage(std::string_view body)
{
    const std::string_view paragraph = lastParagraph(body);
    const std::size_t begin = paragraph.rfind("\n--");
    const std::string_view part =
        begin == std::string_view::npos ? paragraph : paragraph.substr(begin + 1);
    return part.starts_with("--") &&
           holdsMessage(contentOf(part.substr(std::min(part.find('\n'), part.size()))).type);
}

std::string_view lastLine(std::string_view body)
{
    const std::string_view paragraph = lastParagraph(body);
    return trimSpace(paragraph.substr(paragraph.rfind('\n') + 1)); // npos + 1 is the whole
}

bool holdsOneOf(std::string_view text, std::initializer_list<std::string_view> pieces)
{
    return std::any_of(pieces.begin(), pieces.end(), [&](std::string_view piece) {
        return text.find(piece) != std::string_view::npos;
    });
}

bool isBounce(const HeaderFields& fields)
{
    const std::string sender = lowerAscii(fields.value("from"));
    return holdsOneOf(sender, {"mailer-daemon", "postmaster", "mail delivery", "mdaemon"}) ||
           fields.value("return-path") == "<>" ||
           fields.value("content-type").find("multipart/report") != std::string::npos;
}

// "----- Unsent message follows -----", "--- Below this line is a copy".
bool announcesMail(std::string_view body)
{
    const std::string_view line = lastLine(body);
    // The bytes are a full-width colon in UTF-8.
    return line.ends_with(":") || line.ends_with("\xEF\xBC\x9A") || line.starts_with("--") ||
           line.starts_with("==") || line.starts_with("**") || line.starts_with("__") ||
           holdsOneOf(lowerAscii(line),
                      {"original message", "forwarded", "message follows", "headers follow"});
}

bool isBlank(std::string_view line)
{
    return trimSpace(line).empty();
}

std::size_t emptyLinesAhead(LineSource& lines)
{
    constexpr std::size_t kMost = 3;
    std::size_t count = 0;
    while (count < kMost && lines.ahead(count) != nullptr && isBlank(*lines.ahead(count)))
        ++count;
    return count;
}

}

// Called for many lines, so the head is parsed only once.
const MailEnd::HeadFacts& MailEnd::facts(const MailSoFar& mail)
{
    if (facts_) return *facts_;
    const HeaderFields fields(mail.head);
    const ContentType content = parseContentType(fields.value("content-type"));
    const std::string boundary = content.parameter("boundary");
    facts_ = {content.type, boundary.empty() ? boundary : "--" + boundary + "--",
              fields.value("content-length"), isBounce(fields)};
    return *facts_;
}

bool MailEnd::closesOwnParts(std::string_view line, const MailSoFar& mail)
{
    // Two dashes, a boundary of at least one character, two dashes; the quick checks
    // come first, as this runs for each line.
    return line.starts_with("--") && line.size() >= 5 &&
           trimSpace(line) == facts(mail).lastBoundary;
}

bool MailEnd::hasOpenParts(const MailSoFar& mail)
{
    return facts(mail).type.starts_with("multipart/") && !closesOwnParts(lastLine(mail.body), mail);
}

bool MailEnd::isQuotedMail(const MailSoFar& mail)
{
    // Remembered, as the body only grows and would be searched again each time.
    hasText_ = hasText_ || !trimSpace(std::string_view(mail.body)).empty();
    const bool attached =
        hasText_ ? endsInPartOfMessage(mail.body) : holdsMessage(facts(mail).type);
    return attached || (facts(mail).bounce && announcesMail(mail.body));
}

bool MailEnd::isBefore(std::string_view line, std::string_view before, const MailSoFar& mail)
{
    if (line.empty()) return false;
    if (mail.bodyBegin == 0)
        return kind_ == MailFileKind::Mbox && !mail.head.empty() && endsHead(line);
    if (line.starts_with("From ")) return isBeforeSeparator(line, before, mail);
    if (kind_ != MailFileKind::Message) return false;
    // In an SMTP dump the dot ends the mail by protocol; elsewhere only if a mail
    // follows.
    if (line == ".") return envelope_ || blockAhead(lines_, emptyLinesAhead(lines_)).isMail();
    return isBeforeBlock(line, mail);
}

// A mail that lacks even the empty line after its head.
bool MailEnd::endsHead(std::string_view line)
{
    return line.starts_with("From ") && isSeparatorLine(line) && blockAhead(lines_, 0).isMail();
}

// The position of the "From " line that Content-Length predicts, else 0.
std::uint64_t MailEnd::trustedEnd(const MailSoFar& mail)
{
    if (trustedEnd_) return *trustedEnd_;
    trustedEnd_ = 0;
    const std::string& length = facts(mail).length;
    // Twelve digits are far beyond any box and can't overflow.
    if (length.empty() || length.size() > 12 ||
        length.find_first_not_of("0123456789") != std::string::npos)
        return 0;
    const std::uint64_t end = mail.bodyBegin + std::strtoull(length.c_str(), nullptr, 10);
    const std::string there = lines_.bytesAt(end, 16);
    const std::size_t text = there.find_first_not_of("\r\n");
    if (text != std::string::npos && there.substr(text).starts_with("From "))
        trustedEnd_ = end + text;
    return *trustedEnd_;
}

bool MailEnd::isBeforeSeparator(std::string_view line, std::string_view before,
                                const MailSoFar& mail)
{
    if (!beginsLikeSeparator(line)) return false;
    const std::uint64_t end = kind_ == MailFileKind::Mbox ? trustedEnd(mail) : 0;
    // Up to the predicted end no other line counts; past it the other rules apply
    // again.
    if (end > 0 && lines_.lineBegin() <= end) return lines_.lineBegin() == end;
    const bool afterEmpty = isBlank(before);
    const bool dated = isSeparatorLine(line);
    if (!afterEmpty && !closesOwnParts(before, mail)) return false;
    const bool block =
        (dated && afterEmpty && kind_ == MailFileKind::Mbox) || blockAhead(lines_, 0).isMail();
    const bool both = kind_ == MailFileKind::Mbox || dated;
    return block && both && !isQuotedMail(mail);
}

bool MailEnd::isBeforeBlock(std::string_view line, const MailSoFar& mail)
{
    if (lines_.lineBegin() < noBlockBefore_ || !isOwnField(line)) return false;
    const HeaderBlock block = blockAhead(lines_, 0, line);
    if (block.isWholeMail() && !announcesMail(mail.body) && !isQuotedMail(mail) &&
        !facts(mail).bounce && !hasOpenParts(mail))
        return true;
    // The fields inside a rejected block begin no mail either; skipping them keeps the
    // cost linear.
    noBlockBefore_ = lines_.lineBegin() + block.bytes;
    return false;
}

}
