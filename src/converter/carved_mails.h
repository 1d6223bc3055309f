// Internet messages that stand in clear inside a binary file of unknown layout.
//
// Nothing is guessed: a message begins with a header block that holds From or To,
// and Date or Subject, and that an empty line ends. Its text ends at the first byte
// that no text has, at the next such block or at the end of the file.
#pragma once
#include "converter/line_source.h"
#include "converter/mail_gatherer.h"

#include <filesystem>
#include <string>

namespace tolvek {

// Throws std::system_error as the reading does.
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
    std::uint64_t noBlockBefore_ = 0; // so that no line is looked at again and again
};

}
