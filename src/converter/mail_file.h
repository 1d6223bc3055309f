// One mail box as a file: an mbox, a single Internet message, or several of these in a
// row, returned mail by mail while it is read.
#pragma once
#include "converter/line_source.h"
#include "converter/mail_gatherer.h"
#include "converter/mail_kind.h"

#include <filesystem>
#include <string>

namespace tolvek {

class MailFile {
public:
    MailFile(const std::filesystem::path& path, MailFileKind kind);
    bool next(RawMail& mail);

private:
    bool gather(RawMail& mail);
    bool readFirstLine();
    bool toNextMail();

    LineSource lines_;
    MailFileKind kind_;
    bool started_ = false;
    bool ended_ = false;
    bool envelope_ = false;           // the file contains SMTP commands and dots
    std::string line_;                // the first line of the next mail
    std::uint64_t noBlockBefore_ = 0; // see MailEnd
};

}
