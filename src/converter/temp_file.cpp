#include "converter/temp_file.h"

#include "converter/ascii.h"
#include "converter/plain_text.h"
#include "platform/runtime/codepage932.h"

#include <system_error>

namespace tolvek {

namespace {

constexpr std::size_t kLongestValue = 4000; // with its label it fits into one text record
constexpr std::size_t kBuffer = 1 << 16;

// The program deletes *.tmp when it ends, and a side file must not be mistaken for a
// temp file.
std::filesystem::path sidePath(const std::filesystem::path& path)
{
    std::filesystem::path side = path;
    side += ".part";
    return side;
}

std::string heading(std::string_view label, TextView value)
{
    const std::string ansi = toAnsi(trim(plainLine(value)));
    return std::string(label) + ":" + std::string(wholePrefix(ansi, kLongestValue)) + "\r\n";
}

}

TempFile::TempFile(std::filesystem::path path)
    : path_(std::move(path)), side_(sidePath(path_)), file_(side_, OpenFile::Mode::Anew)
{
}

TempFile::~TempFile()
{
    if (committed_) return;
    std::error_code alreadyGone;
    std::filesystem::remove(side_, alreadyGone);
}

void TempFile::write(std::string_view bytes)
{
    buffer_ += bytes;
    if (buffer_.size() < kBuffer) return;
    file_.write(buffer_);
    buffer_.clear();
}

void TempFile::commit()
{
    file_.write(buffer_);
    // On disk before the rename: a power cut leaves the old file or the whole new one.
    file_.flush();
    file_.close();
    replaceFile(side_, path_);
    committed_ = true;
}

void writeMail(TempFile& temp, const TempMail& mail)
{
    std::string group =
        heading("From", mail.from) + heading("To", mail.to) + heading("Subject", mail.subject);
    group += "Date:" + mail.date + "\r\nMail:\r\n";
    TextBlocks blocks;
    // Without a date the reader parses text lines as headings. It drops the mail
    // anyway, so none of its lines is written.
    std::string_view rest = mail.date.empty() ? std::string_view() : mail.lines;
    while (!rest.empty()) {
        // Written line by line: the text may be as large as the mail.
        blocks.add(group, takeLine(rest));
        temp.write(group);
        group.clear();
    }
    temp.write(group + "<End>\r\n");
}

}
