#include "app/converter_library.h"
#include "app/guard.h"
#include "app/reports.h"
#include "app/text_routines.h"
#include "import/mail_fields.h"
#include "platform/runtime/do_events.h"
#include "platform/runtime/text.h"
#include "platform/runtime/text_files.h"
#include "store/long_mail.h"

#include <algorithm>

namespace tolvek {
namespace {

constexpr TextView kEndLabel = u"<End>";
constexpr int kFullRow = 15; // after this many full blocks, a part is stored
constexpr int kBlankRun = 3; // of this many empty lines, one is kept

// A block of only blanks and line ends counts as empty: the next line replaces it.
bool holdsNothing(const Text& block)
{
    return block.find_first_not_of(u" \u3000\r\n") == Text::npos;
}

// A character has one or two bytes, so most blocks are decided without counting bytes.
bool isFull(const Text& block)
{
    if (block.size() * 2 <= kTextRecordSize) return false;
    return block.size() > kTextRecordSize || ansiLength(block) > kTextRecordSize;
}

struct MailHeadings {
    Int16 SndRcvFlag;
    const Text& SndName;
    const Text& SndAdd;
    const Text& RcvName;
    const Text& RcvAdd;
    const Text& Subject;
    Text& YMD;
    Text& HMS;
};

class TextGatherer {
public:
    TextGatherer(Int16 fileNumber, Text& line, const MailHeadings& mail, MailBlocks& mailText,
                 Int16& mailDone, Storing& parts)
        : fileNumber_(fileNumber), line_(line), mail_(mail), mailText_(mailText),
          mailDone_(mailDone), parts_(parts)
    {
    }

    void gather()
    {
        clearBlocks();
        // A missing end line means that the conversion was cut off: the mail is
        // silently dropped, and the reader closes the file. The same happens when a
        // part of it couldn't be stored because of an error that the next part would
        // meet too.
        while (!reports_.lasting() && !endOfFile(fileNumber_)) {
            line_ = lineInput(fileNumber_);
            if (line_.starts_with(kEndLabel)) return handOver();
            if (current_ >= kFullRow) storePart();
            if (line_.empty())
                takeEmptyLine();
            else
                takeLine();
            DoEvents();
        }
    }

private:
    void clearBlocks()
    {
        for (int block = 0; block <= 15; ++block) {
            mailText_[block].clear();
            blocks_[block].clear();
            DoEvents();
        }
    }

    void handOver()
    {
        blocks_[current_] += u'\0';
        for (int block = 0; block <= current_; ++block) {
            if (mailDone_ == -1)
                Mail_StrChange_Sub(blocks_[block], mailText_[block]);
            else
                mailText_[block].clear();
        }
    }

    // The mail is too long for one row: the text read so far is stored as a row of its
    // own, and the line just read begins the next part.
    void storePart()
    {
        blocks_[current_] += u'\0';
        decodeBlocks();
        const Text subject = subjectOfPart(mail_.Subject);
        parts_ = std::max(parts_, TolvekDB_Edit(mail_.SndRcvFlag, mail_.SndName, mail_.SndAdd,
                                                mail_.RcvName, mail_.RcvAdd, subject, mail_.YMD,
                                                mail_.HMS, blocks_));
        for (int block = 0; block <= current_; ++block)
            blocks_[block].clear();
        addSecond(mail_.YMD, mail_.HMS);
        current_ = 0;
        lines_ = 0;
        mailDone_ = 0;
    }

    void decodeBlocks()
    {
        for (int block = 0; block <= current_; ++block) {
            Text decoded;
            Mail_StrChange_Sub(blocks_[block], decoded);
            StrChange(decoded, u"|", u"｜", 1, blocks_[block]);
        }
    }

    // Runs of empty lines are compressed: every third one is kept. Kept quirk: the
    // count continues across blocks and stored parts.
    void takeEmptyLine()
    {
        blankLines_ += 1;
        if (blankLines_ < kBlankRun) return;
        blocks_[current_] += kCrLf;
        blankLines_ = 0;
    }

    void takeLine()
    {
        mailDone_ = -1;
        Text& block = blocks_[current_];
        if (holdsNothing(block)) block.clear();
        block += line_;
        block += kCrLf;
        lines_ += 1;
        if (lines_ >= kTextRecordLines || isFull(block)) {
            lines_ = 0;
            current_ += 1;
        }
        blankLines_ = 0;
    }

    const ReportWatch reports_;
    Int16 fileNumber_;
    Text& line_;
    const MailHeadings& mail_;
    MailBlocks& mailText_;
    Int16& mailDone_;
    Storing& parts_;
    MailBlocks blocks_;
    Int16 current_;
    Int16 lines_;
    Int16 blankLines_;
};

}

Storing edMail(Int16 fileNumber, Text& line, Int16 SndRcvFlag, const Text& SndName,
               const Text& SndAdd, const Text& RcvName, const Text& RcvAdd, const Text& Subject,
               Text& YMD, Text& HMS, MailBlocks& MailText, Int16& MailDone)
{
    Storing parts = Storing::Nothing;
    leavePlainOnError(u"edMail", [&] {
        const MailHeadings mail{SndRcvFlag, SndName, SndAdd, RcvName, RcvAdd, Subject, YMD, HMS};
        TextGatherer(fileNumber, line, mail, MailText, MailDone, parts).gather();
    });
    return parts;
}

}
