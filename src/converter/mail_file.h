// One mail box as a file: an mbox or a single Internet message, handed out
// mail by mail while it is read.
//
// What a file is can only be told from its beginning; anything that isn't one
// of the two for certain is Nothing, never a guess.
#pragma once
#include "converter/line_source.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace tolvek {

enum class MailFileKind { Nothing, Empty, Mbox, Message };

// Missing files and folders are Nothing. Throws std::system_error on a file
// that is there and can't be read.
MailFileKind recogniseFile(const std::filesystem::path& path);
MailFileKind recognise(std::string_view beginning);

struct RawMail {
    std::string separator; // of an mbox; empty for a single message
    std::string head;      // header lines, each with LF
    std::string body;      // body lines, each with LF, ">From " undone
};

class MailFile {
public:
    // What stands beyond this many bytes of one mail is left out, so that a
    // broken box can't take all memory; texts stand in front of attachments.
    static constexpr std::size_t kLargestMail = 64u << 20;

    MailFile(const std::filesystem::path& path, MailFileKind kind);
    bool next(RawMail& mail);

private:
    class Gatherer;
    bool readFirstLine();

    LineSource lines_;
    bool mbox_;
    bool started_ = false;
    bool ended_ = false;
    std::string line_; // the line that begins the next mail
};

}
