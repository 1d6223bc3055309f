// Whether a line begins the next mail of its file.
//
// In an mbox a "From " line does so after an empty line if it has a date or a header
// block follows, and right after the closing boundary of the current mail if a header
// block follows. Content-Length is believed if a "From " line is at its end; then no
// line before it counts. A mail that is quoted in a bounce, or is a part of the
// current one, isn't split off.
//
// In a file without separator lines the next mail begins with a header block: after a
// line with a single dot, or directly if the block is complete and nothing announces a
// quotation. A separator line counts there only with both a date and a block.
#pragma once
#include "converter/line_source.h"
#include "converter/mail_kind.h"

#include <optional>
#include <string>
#include <string_view>

namespace tolvek {

// The current mail as gathered so far.
struct MailSoFar {
    const std::string& head;
    const std::string& body;
    std::uint64_t bodyBegin; // its position in the file; 0 within the head
};

class MailEnd {
public:
    // noBlockBefore: the position in the file before which no header block begins that
    // would end a mail. It is kept from mail to mail, so that no line is examined
    // twice.
    MailEnd(LineSource& lines, MailFileKind kind, bool envelope, std::uint64_t& noBlockBefore)
        : lines_(lines), kind_(kind), envelope_(envelope), noBlockBefore_(noBlockBefore)
    {
    }

    // line: the current one of the source; before: the previous one.
    bool isBefore(std::string_view line, std::string_view before, const MailSoFar& mail);

private:
    bool endsHead(std::string_view line);
    bool isBeforeSeparator(std::string_view line, std::string_view before, const MailSoFar& mail);
    bool isBeforeBlock(std::string_view line, const MailSoFar& mail);
    std::uint64_t trustedEnd(const MailSoFar& mail);

    // Facts from the complete head.
    struct HeadFacts {
        std::string type, lastBoundary, length;
        bool bounce;
    };
    const HeadFacts& facts(const MailSoFar& mail);
    bool closesOwnParts(std::string_view line, const MailSoFar& mail);
    bool hasOpenParts(const MailSoFar& mail);
    bool isQuotedMail(const MailSoFar& mail);

    LineSource& lines_;
    MailFileKind kind_;
    bool envelope_;
    std::uint64_t& noBlockBefore_;
    std::optional<std::uint64_t> trustedEnd_;
    std::optional<HeadFacts> facts_;
    bool hasText_ = false; // in the body so far
};

}
