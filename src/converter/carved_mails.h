// Internet messages in clear text inside a binary file of unknown layout.
//
// Nothing is guessed: a message begins with a header block that has From or To, and
// Date or Subject, and that ends with an empty line. Its text ends at the first binary
// byte, at the next such block or at the end of the file.
#pragma once
#include "converter/line_source.h"
#include "converter/mail_gatherer.h"

#include <filesystem>
#include <string>

namespace tolvek {

// Throws std::system_error when reading fails.
bool holdsCarvedMail(const std::filesystem::path& path);

class CarvedMails {
public:
    explicit CarvedMails(const std::filesystem::path& path) : lines_(path) {}
    bool next(RawMail& mail);

private:
    bool toNextBlock();
    bool beginsBlock(std::string_view line);

    LineSource lines_;
    std::string line_;
    bool hasLine_ = false;            // line_ may begin the next message
    std::uint64_t noBlockBefore_ = 0; // a position; lines before it were examined already
};

}
