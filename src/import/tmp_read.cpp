#include "import/tmp_read.h"

#include "filter/mail_non_copy_check.h"
#include "import/blank_text.h"
#include "import/mail_fields.h"
#include "platform/forms/do_events.h"
#include "platform/runtime/directory.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/text_files.h"
#include "shell/base/guard.h"
#include "shell/base/state.h"

namespace tolvek {
namespace {

class TmpReader {
public:
    TmpReader(Int16 side, Int16 sndRcvFlag, Int16 count)
        : side_(side), sndRcvFlag_(sndRcvFlag), count_(count)
    {
    }

    void read()
    {
        on_([this] { number_ = freeFile(); });
        if (!findFile()) return;
        on_([this] { openForInput(path_, number_); });
        skipPreamble();
        showNumber();
        while (!atEnd())
            readOneLine();
        on_([this] { closeFile(number_); });
    }

private:
    bool findFile()
    {
        bool found = false;
        path_ = joinPath(appPath(), u"Tolvek.Tmp");
        on_([&] { found = !dir(path_).empty(); });
        return found;
    }

    // A file whose end can't be asked for counts as read to its end: the
    // statement behind a loop is where a failing loop goes on.
    bool atEnd()
    {
        bool end = true;
        on_([this, &end] { end = endOfFile(number_); });
        return end;
    }

    // The one place where the file is read by fields: a comma splits a line,
    // quotes around a field are taken off.
    void skipPreamble()
    {
        Text field;
        while (field != u"<Start>" && !atEnd())
            on_([&] { field = inputText(number_); });
    }

    void readOneLine()
    {
        gStatusLines[5] = progress_;
        on_([] { DoEvents(); });
        on_([this] { line_ = lineInput(number_); });
        if (isDuplicate_ == 0) takeHeading();
        if (line_.starts_with(u"<End>")) finishMail();
        if (dupChecked_ == 0) lookForDuplicate();
    }

    // Case counts, and a leading blank hides a label. What is no label is passed over.
    void takeHeading()
    {
        if (line_.starts_with(u"From"))
            on_([this] { edAddres(side_, -1, line_, sndName_, sndAdd_); });
        else if (line_.starts_with(u"To"))
            on_([this] { edAddres(side_, 0, line_, rcvName_, rcvAdd_); });
        else if (line_.starts_with(u"Subject"))
            on_([this] { edSubject(line_, subject_); });
        else if (line_.starts_with(u"Date"))
            on_([this] { edDate(line_, ymd_, hms_); });
        else if (line_.starts_with(u"Mail"))
            readText();
    }

    bool hasDate() const { return !isBlank(ymd_) && !isBlank(hms_); }

    // The text of a mail without a date comes through readOneLine, where its
    // lines are tested against the labels like any other.
    void readText()
    {
        mailDone_ = 0;
        if (hasDate())
            on_([this] {
                edMail(number_, line_, sndRcvFlag_, sndName_, sndAdd_, rcvName_, rcvAdd_, subject_,
                       ymd_, hms_, mailText_, mailDone_);
            });
    }

    void finishMail()
    {
        on_([this] {
            if (isToBeStored())
                TolvekDB_Edit(sndRcvFlag_, sndName_, sndAdd_, rcvName_, rcvAdd_, subject_, ymd_,
                              hms_, mailText_);
        });
        clearText();
        on_([this] { mailNo_ += 1; });
        showNumber();
        for (Text* heading : {&sndName_, &sndAdd_, &rcvName_, &rcvAdd_, &subject_, &ymd_, &hms_})
            heading->clear();
        isDuplicate_ = 0;
        dupChecked_ = 0;
        mailDone_ = 0;
    }

    bool isToBeStored() const
    {
        return hasDate() && isDuplicate_ == 0 && mailDone_ == -1 &&
               MailNonCopyCheck(sndName_, sndAdd_, rcvName_, rcvAdd_, subject_) == 0;
    }

    // The three lengths are combined bit by bit. With a date of eight characters
    // only addresses of 8 to 15, 24 to 31, 40 to 47 and 56 to 60 characters are
    // looked for here; any other stored mail is read whole and refused by
    // TolvekDB_Edit. The look-up saves work and decides nothing.
    void lookForDuplicate()
    {
        if ((trimmedLength(sndAdd_) & trimmedLength(rcvAdd_) & trimmedLength(ymd_)) == 0) return;
        isDuplicate_ = 0;
        on_([this] {
            duplMailCheck(sndName_, sndAdd_, rcvName_, rcvAdd_, ymd_, hms_, subject_, isDuplicate_);
        });
        if (isDuplicate_ != 0) sndAdd_.clear();
        dupChecked_ = -1;
    }

    void clearText()
    {
        for (int block = 0; block <= 15; ++block)
            mailText_[block].clear();
    }

    void showNumber()
    {
        progress_ =
            u"   " + decimal(mailNo_) + u" / " + decimal(count_) + u"  のデータを処理中です。";
    }

    const ResumeNext on_{u"tmpRead"};
    const Int16 side_, sndRcvFlag_, count_;
    Int16 number_;
    Text path_, line_, progress_;

    Text sndName_, sndAdd_, rcvName_, rcvAdd_, subject_, ymd_, hms_;
    MailBlocks mailText_;
    Int16 mailDone_;    // -1: edMail has met text
    Int16 isDuplicate_; // not 0: the mail is in the store already, skip to its end line
    Int16 dupChecked_;  // -1: it was looked for
    Int16 mailNo_;      // mails finished so far
};

}

void tmpRead(Int16 side, Int16 SndRcvFlag, Int16 count)
{
    TmpReader(side, SndRcvFlag, count).read();
}

}
