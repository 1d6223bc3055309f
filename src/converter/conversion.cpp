#include "converter/conversion.h"

#include "converter/address.h"
#include "converter/encoded_words.h"
#include "converter/header_fields.h"
#include "converter/mail_date.h"
#include "converter/mail_text.h"
#include "converter/plain_text.h"
#include "converter/separator_line.h"

#include <initializer_list>
#include <limits>
#include <system_error>

namespace tolvek {

namespace {

Text firstOf(const HeaderFields& fields, std::initializer_list<std::string_view> names)
{
    for (const std::string_view name : names) {
        const Mailbox box = firstMailbox(fields.value(name));
        if (!box.name.empty() || !box.address.empty()) return mailboxValue(box);
    }
    return {};
}

Text senderOf(const HeaderFields& fields, const std::string& separator)
{
    const Text sender = firstOf(fields, {"from", "sender", "reply-to", "return-path"});
    return sender.empty() ? mailboxValue(firstMailbox(separatorSender(separator))) : sender;
}

// The sender's own date, else the oldest stamp of the road, else the mbox's.
std::string dateOf(const HeaderFields& fields, const std::string& separator)
{
    auto date = parseMailDate(fields.value("date"));
    const auto stamps = fields.values("received");
    for (auto stamp = stamps.rbegin(); !date && stamp != stamps.rend(); ++stamp)
        if (const std::size_t mark = stamp->rfind(';'); mark != std::string::npos)
            date = parseMailDate(std::string_view(*stamp).substr(mark + 1));
    if (!date) date = parseMailDate(separatorDate(separator));
    if (!date) date = parseMailDate(fields.value("date"), DateRule::Nearest);
    return date ? formatMailDate(*date) : std::string();
}

Conversion writeMails(MailFile& mails, const std::filesystem::path& tempFile)
{
    constexpr int kMost = std::numeric_limits<std::int16_t>::max();
    TempFile temp(tempFile);
    temp.write("<Start>\r\n");
    RawMail mail;
    int count = 0;
    while (mails.next(mail)) {
        if (++count > kMost) return {ConversionStatus::TooMany, 0};
        temp.write(tempGroup(convertMail(mail)));
    }
    temp.commit();
    return {ConversionStatus::Converted, static_cast<std::int16_t>(count)};
}

}

TempMail convertMail(const RawMail& mail)
{
    const HeaderFields fields(mail.head);
    return {senderOf(fields, mail.separator), firstOf(fields, {"to", "apparently-to", "cc", "bcc"}),
            decodeEncodedWords(unfoldedText(fields.value("subject"))),
            dateOf(fields, mail.separator), plainLines(mailText(fields, mail.body))};
}

Conversion convertMailBox(const std::filesystem::path& mailFile,
                          const std::filesystem::path& tempFile)
{
    try {
        const MailFileKind kind = recogniseFile(mailFile);
        if (kind == MailFileKind::Nothing) return {ConversionStatus::Unreadable, 0};
        MailFile mails(mailFile, kind);
        return writeMails(mails, tempFile);
    } catch (const std::system_error&) {
        return {ConversionStatus::Failed, 0};
    }
}

}
