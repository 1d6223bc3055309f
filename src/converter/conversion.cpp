#include "converter/conversion.h"

#include "converter/address.h"
#include "converter/box_changes.h"
#include "converter/carved_mails.h"
#include "converter/encoded_words.h"
#include "converter/first_lines.h"
#include "converter/header_fields.h"
#include "converter/mail_date.h"
#include "converter/mail_folder.h"
#include "converter/mail_text.h"
#include "converter/plain_text.h"
#include "converter/separator_line.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <limits>
#include <memory>
#include <optional>
#include <system_error>
#include <vector>

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
    // From names the writer; the others are increasingly technical.
    const Text sender = firstOf(fields, {"from", "sender", "reply-to", "return-path"});
    return sender.empty() ? mailboxValue(firstMailbox(separatorSender(separator))) : sender;
}

using Found = std::optional<MailDate>;

constexpr int kFirstYear = 1985; // no Internet mail is older; a clock that was never set gives less
constexpr std::int64_t kMargin = 2 * 24 * 3600;

Found firstDate(const std::vector<std::string>& values)
{
    for (const std::string& value : values)
        if (const Found date = parseMailDate(value)) return date;
    return std::nullopt;
}

// The dates of the Received fields, the newest first, as each server puts its own on
// top.
std::vector<std::string> stampDates(const HeaderFields& fields)
{
    std::vector<std::string> dates;
    for (const std::string& stamp : fields.values("received"))
        if (const std::size_t mark = stamp.rfind(';'); mark != std::string::npos)
            dates.push_back(stamp.substr(mark + 1));
    return dates;
}

bool isPossible(const Found& date)
{
    return date && date->year >= kFirstYear;
}

// A clock that was never set, or is ahead: no mail is received before it was sent. Two
// days are allowed for wrong zones.
bool isDoubtful(const MailDate& date, const Found& newestStamp)
{
    const bool ahead =
        isPossible(newestStamp) && secondsOf(date) > secondsOf(*newestStamp) + kMargin;
    return date.year < kFirstYear || ahead;
}

// The sender's date unless it is doubtful; else the date of resending or delivery, the
// oldest Received field, the mbox separator, the doubtful date, and at last the date
// nearest to what the sender's says.
std::string dateOf(const HeaderFields& fields, const std::string& separator)
{
    std::vector<std::string> stamps = stampDates(fields);
    // Resent-Date and Delivery-Date replace a missing Date, but not a doubtful one.
    const Found sent = firstDate(fields.values("date"));
    if (sent && !isDoubtful(*sent, firstDate(stamps))) return formatMailDate(*sent);
    std::reverse(stamps.begin(), stamps.end());
    Found date;
    if (!sent) date = firstDate(fields.values("resent-date"));
    if (!sent && !isPossible(date)) date = firstDate(fields.values("delivery-date"));
    if (!isPossible(date)) date = firstDate(stamps);
    if (!isPossible(date)) date = parseMailDate(separatorDate(separator));
    if (!isPossible(date)) date = sent;
    if (!date) date = parseMailDate(fields.value("date"), DateRule::Nearest);
    return date ? formatMailDate(*date) : std::string();
}

// The count is returned in 16 bits; beyond, it stays at its largest value.
constexpr int kMost = std::numeric_limits<std::int16_t>::max();

struct DatedFile {
    std::filesystem::path path;
    std::int64_t seconds;
};

std::string dateOfFirst(const std::filesystem::path& path)
{
    MailFile mails(path, recogniseFile(path));
    RawMail mail;
    return mails.next(mail) ? dateOf(HeaderFields(mail.head), mail.separator) : std::string();
}

// Unreadable files sort first; readMessage leaves them out.
std::int64_t secondsOfFile(const std::filesystem::path& path)
{
    try {
        const Found date = parseMailDate(dateOfFirst(path));
        return secondsOf(date ? *date : fileDate(path));
    } catch (const std::system_error&) {
        return 0;
    }
}

void writeCounted(TempFile& temp, const TempMail& mail, Conversion& conversion)
{
    writeMail(temp, mail);
    if (conversion.count < kMost) ++conversion.count;
}

// Writes a file's mails; false if none can be read.
bool readMessage(const std::filesystem::path& path, TempFile& temp, Conversion& conversion)
{
    try {
        MailFile mails(path, recogniseFile(path));
        RawMail mail;
        bool any = false;
        for (; mails.next(mail); any = true) {
            TempMail converted = convertMail(mail);
            if (converted.date.empty()) converted.date = formatMailDate(fileDate(path));
            ++conversion.mails;
            writeCounted(temp, converted, conversion);
        }
        return any;
    } catch (const std::system_error& failure) {
        if (failure.code() == std::errc::io_error) throw;
        return false;
    }
}

Conversion writeFolder(const std::filesystem::path& folder, const std::filesystem::path& tempFile)
{
    const auto files = messageFiles(folder);
    if (!files) return {ConversionStatus::Unreadable};
    std::vector<DatedFile> dated;
    for (const std::filesystem::path& path : *files)
        dated.push_back({path, secondsOfFile(path)});
    // Stable: files of one date stay in the order of their names.
    std::stable_sort(dated.begin(), dated.end(),
                     [](const auto& a, const auto& b) { return a.seconds < b.seconds; });
    TempFile temp(tempFile);
    temp.write("<Start>\r\n");
    Conversion conversion{ConversionStatus::Converted};
    for (const DatedFile& file : dated)
        if (!readMessage(file.path, temp, conversion))
            conversion.leftOut.push_back(
                {LeftOut::Why::UnreadableFile, file.path.lexically_relative(folder).string()});
    temp.commit();
    return conversion;
}

using NextMail = std::function<bool(RawMail&)>;

struct ConvertedMail {
    TempMail mail;
    std::string head; // as in the box
};

void writeOrLeave(TempFile& temp, const ConvertedMail& converted, Conversion& conversion)
{
    if (converted.mail.date.empty())
        conversion.leftOut.push_back({LeftOut::Why::NoDate, firstLines(converted.head)});
    writeCounted(temp, converted.mail, conversion);
}

// Each mail is written only when the next one has come, as the last one of a growing
// box may be incomplete.
Conversion writeMails(const NextMail& next, const BoxChanges& changes,
                      const std::filesystem::path& tempFile)
{
    TempFile temp(tempFile);
    temp.write("<Start>\r\n");
    RawMail mail;
    std::optional<ConvertedMail> last;
    Conversion conversion{ConversionStatus::Converted};
    for (; next(mail); ++conversion.mails) {
        if (last) writeOrLeave(temp, *last, conversion);
        last = ConvertedMail{convertMail(mail), std::move(mail.head)};
    }
    // Without commit() the temp file is discarded.
    if (changes.kind() == BoxChanges::Kind::Rewritten) return {ConversionStatus::Changing};
    if (last && changes.kind() == BoxChanges::Kind::Grown)
        conversion.leftOut.push_back({LeftOut::Why::StillGrowing, firstLines(last->head)});
    else if (last)
        writeOrLeave(temp, *last, conversion);
    temp.commit();
    return conversion;
}

template <class Mails> NextMail nextOf(std::shared_ptr<Mails> mails)
{
    return [mails](RawMail& mail) { return mails->next(mail); };
}

// Empty for a file that isn't recognised for certain.
NextMail openedBox(const std::filesystem::path& mailFile)
{
    const MailFileKind kind = recogniseFile(mailFile);
    if (kind != MailFileKind::Nothing) return nextOf(std::make_shared<MailFile>(mailFile, kind));
    if (!holdsCarvedMail(mailFile)) return {};
    return nextOf(std::make_shared<CarvedMails>(mailFile));
}

// A box that this user may not read concerns that box alone; a failing device doesn't.
Conversion convertOnce(const std::filesystem::path& mailFile, const std::filesystem::path& tempFile)
{
    // Before the box is opened, so that no change goes unnoticed.
    const BoxChanges changes(mailFile);
    NextMail next;
    try {
        next = openedBox(mailFile);
    } catch (const std::system_error& failure) {
        // A failing device isn't this file's own fault and ends the whole conversion.
        if (failure.code() == std::errc::io_error) throw;
        return {ConversionStatus::Failed};
    }
    if (next) return writeMails(next, changes, tempFile);
    Conversion nothing{ConversionStatus::Unreadable};
    if (!entryExists(mailFile)) nothing.leftOut.push_back({LeftOut::Why::NothingThere, {}});
    return nothing;
}

}

TempMail convertMail(const RawMail& mail)
{
    const HeaderFields fields(mail.head);
    return {senderOf(fields, mail.separator), firstOf(fields, {"to", "apparently-to", "cc", "bcc"}),
            decodeEncodedWords(unfoldedText(fields.value("subject"))),
            dateOf(fields, mail.separator), mailText(fields, mail.body)};
}

Conversion convertMailBox(const std::filesystem::path& mailFile,
                          const std::filesystem::path& tempFile)
{
    constexpr int kAttempts = 3;
    try {
        // No check for changes: each mail of a folder is a file of its own.
        if (const auto folder = folderOfBox(mailFile); !folder.empty())
            return writeFolder(folder, tempFile);
        Conversion conversion = convertOnce(mailFile, tempFile);
        // A mail program rewrites a box in moments; a later attempt usually finds it
        // at rest.
        for (int n = 1; n < kAttempts && conversion.status == ConversionStatus::Changing; ++n)
            conversion = convertOnce(mailFile, tempFile);
        return conversion;
    } catch (const std::system_error& failure) {
        return {.status = ConversionStatus::Failed, .failure = failure.code()};
    }
}

}
