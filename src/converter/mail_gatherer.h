// Distributes the lines of one mail to its head and its body.
//
// The head ends at an empty line. A line in it that is no field ends it only if none
// of a mail's own fields follows before the empty line; otherwise the line is joined
// to the field before it or left out.
#pragma once
#include "converter/line_source.h"
#include "converter/mail_end.h"

#include <string>
#include <string_view>

namespace tolvek {

struct RawMail {
    std::string separator; // of an mbox; empty for a single message
    std::string head;      // header lines, each with LF
    std::string body;      // body lines, each with LF, ">From " unescaped
};

class MailGatherer {
public:
    // The rest of a longer mail is left out, so that a broken box can't exhaust
    // memory; texts precede attachments.
    static constexpr std::size_t kLargestMail = 64u << 20;

    MailGatherer(RawMail& mail, LineSource& lines, MailFileKind kind, bool envelope)
        : mail_(mail), lines_(lines), mbox_(kind == MailFileKind::Mbox), envelope_(envelope)
    {
    }

    // Takes the line that the source returned last.
    void add(std::string_view line);

    // The empty line before a separator belongs to the separator.
    void dropLastEmptyLine();

    MailSoFar soFar() const { return {mail_.head, mail_.body, bodyBegin_}; }

private:
    void addToHead(std::string line);
    void addToBody(std::string_view line);
    void takeBrokenLine(const std::string& line);
    bool belongsToHead(std::string_view line) const;
    std::string_view lastHeadLine() const;
    void append(std::string& part, std::string_view line);

    RawMail& mail_;
    LineSource& lines_;
    bool mbox_;
    bool envelope_;
    bool inHead_ = true;
    std::size_t headAhead_ = 0; // lines from here on that are known to belong to the head
    std::uint64_t bodyBegin_ = 0;
};

}
