#include "import/tmp_read.h"

#include "app/file_names.h"
#include "app/guard.h"
#include "app/reports.h"
#include "app/state.h"
#include "filter/mail_non_copy_check.h"
#include "import/mail_fields.h"
#include "platform/dao/dao.h"
#include "platform/runtime/directory.h"
#include "platform/runtime/do_events.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/text.h"
#include "platform/runtime/text_files.h"

#include <algorithm>

namespace tolvek {
namespace {

constexpr int kMostCounted = 32767;
constexpr std::chrono::milliseconds kGroupTime{50};

class TmpReader {
public:
    TmpReader(Int16 side, Int16 sndRcvFlag, Int16 count, ReadAccount& account)
        : side_(side), sndRcvFlag_(sndRcvFlag), count_(count), account_(account)
    {
    }

    void read()
    {
        on_([this] { number_ = freeFile(); });
        if (!findFile()) return;
        on_([this] { openForInput(path_, number_); });
        skipPreamble();
        showNumber();
        while (!isOver())
            readOneLine();
        on_([this] { closeFile(number_); });
        on_([this] { group_.end(); });
    }

private:
    bool findFile()
    {
        bool found = false;
        path_ = joinPath(appPath(), kMailTempName);
        on_([&] { found = !dir(path_).empty(); });
        return found;
    }

    // When the end-of-file test fails, the file counts as finished: after a failing
    // loop condition, the statement after the loop is next.
    bool isOver()
    {
        bool end = true;
        if (!reports_.lasting()) on_([this, &end] { end = endOfFile(number_); });
        return end;
    }

    // Only here is the file read field by field: a comma splits a line, and quotes
    // around a field are removed.
    void skipPreamble()
    {
        Text field;
        while (field != u"<Start>" && !isOver())
            on_([&] { field = inputText(number_); });
    }

    void readOneLine()
    {
        gStatusLines[5] = progress_;
        on_([] { DoEvents(); });
        if (!on_([this] { line_ = lineInput(number_); }) && reports_.lasting()) return;
        if (IsDuplicate == 0) takeHeading();
        if (reports_.lasting()) return;
        if (line_.starts_with(u"<End>")) finishMail();
        if (DupChecked == 0) lookForDuplicate();
    }

    // Labels are case-sensitive, and a leading blank hides one. Other lines are
    // skipped.
    void takeHeading()
    {
        if (line_.starts_with(u"From"))
            on_([this] { edAddres(side_, -1, line_, SndName, SndAdd); });
        else if (line_.starts_with(u"To"))
            on_([this] { edAddres(side_, 0, line_, RcvName, RcvAdd); });
        else if (line_.starts_with(u"Subject"))
            on_([this] { edSubject(line_, Subject); });
        else if (line_.starts_with(u"Date"))
            takeDate();
        else if (line_.starts_with(u"Mail"))
            readText();
    }

    void takeDate()
    {
        dateLine_ = line_;
        on_([this] { edDate(line_, YMD, HMS); });
    }

    bool hasDate() const { return !isBlank(YMD) && !isBlank(HMS); }

    // The text of a mail without a date goes through readOneLine, where its lines are
    // tested for labels like any other.
    void readText()
    {
        MailDone = 0;
        if (hasDate())
            on_([this] {
                parts_ = edMail(number_, line_, sndRcvFlag_, SndName, SndAdd, RcvName, RcvAdd,
                                Subject, YMD, HMS, MailText, MailDone);
            });
    }

    void finishMail()
    {
        on_([this] { storeMail(); });
        account_.mail(fate(), fate() == MailFate::KeptOut ? keptOutBy_.Header : headings());
        clearText();
        // The converter's count ends there too; later mails are read all the same.
        if (MailNo < kMostCounted) on_([this] { MailNo += 1; });
        showNumber();
        for (Text* heading : {&SndName, &SndAdd, &RcvName, &RcvAdd, &Subject, &YMD, &HMS})
            heading->clear();
        IsDuplicate = 0;
        DupChecked = 0;
        MailDone = 0;
        forgetFate();
    }

    void storeMail()
    {
        if (!hasDate() || IsDuplicate != 0 || MailDone != -1) return;
        keptOut_ = MailNonCopyCheck(SndName, SndAdd, RcvName, RcvAdd, Subject, &keptOutBy_) != 0;
        if (keptOut_) return;
        parts_ = std::max(parts_, TolvekDB_Edit(sndRcvFlag_, SndName, SndAdd, RcvName, RcvAdd,
                                                Subject, YMD, HMS, MailText));
    }

    // Of a long mail whose last part was left out, the parts that are stored count.
    MailFate fate() const
    {
        if (parts_ == Storing::Stored) return MailFate::Stored;
        if (!hasDate()) return MailFate::NoDate;
        if (mailReports_.any() || parts_ == Storing::Failed) return MailFate::Failed;
        if (IsDuplicate != 0 || parts_ == Storing::Known) return MailFate::Known;
        if (keptOut_) return MailFate::KeptOut;
        return MailFate::NoText;
    }

    void forgetFate()
    {
        parts_ = Storing::Nothing;
        keptOut_ = false;
        dateLine_.clear();
        mailReports_ = ReportWatch();
    }

    // The date as it stands in the file: it may be what is wrong with the mail.
    Text headings() const
    {
        return u"From: " + SndName + u" <" + SndAdd + u">\nTo: " + RcvName + u" <" + RcvAdd +
               u">\nSubject: " + Subject + u"\n" + dateLine_;
    }

    // Kept quirk: the three lengths are combined bitwise. With a date of eight
    // characters, only mails with addresses of 8 to 15, 24 to 31, 40 to 47 and 56 to 60
    // characters are looked up here; any other stored mail is read completely and
    // refused by TolvekDB_Edit. The look-up only saves work.
    void lookForDuplicate()
    {
        if ((trimmedLength(SndAdd) & trimmedLength(RcvAdd) & trimmedLength(YMD)) == 0) return;
        IsDuplicate = 0;
        on_([this] {
            duplMailCheck(SndName, SndAdd, RcvName, RcvAdd, YMD, HMS, Subject, IsDuplicate);
        });
        if (IsDuplicate != 0) SndAdd.clear();
        DupChecked = -1;
    }

    void clearText()
    {
        for (int block = 0; block <= 15; ++block)
            MailText[block].clear();
    }

    void showNumber()
    {
        progress_ =
            u"   " + decimal(MailNo) + u" / " + decimal(count_) + u"  のデータを処理中です。";
    }

    const ResumeNext on_{u"tmpRead"};
    // A box still holds what a kill in these moments would lose; the next read brings it.
    DBEngine::CommitGroup group_{kGroupTime};
    const ReportWatch reports_;
    const Int16 side_, sndRcvFlag_, count_;
    ReadAccount& account_;
    Int16 number_;
    Text path_, line_, progress_;

    Text SndName, SndAdd, RcvName, RcvAdd, Subject, YMD, HMS;
    MailBlocks MailText;
    Int16 MailDone;    // -1: edMail found text
    Int16 IsDuplicate; // not 0: the mail is stored already; skip to its end line
    Int16 DupChecked;  // -1: the look-up was done
    Int16 MailNo;      // mails finished so far

    // For the account of the mail being read.
    ReportWatch mailReports_;
    Storing parts_ = Storing::Nothing;
    bool keptOut_ = false;
    FilterRule keptOutBy_;
    Text dateLine_;
};

}

void tmpRead(Int16 side, Int16 SndRcvFlag, Int16 count, ReadAccount& account)
{
    TmpReader(side, SndRcvFlag, count, account).read();
}

void tmpRead(Int16 side, Int16 SndRcvFlag, Int16 count)
{
    ReadAccount unread;
    unread.expectBox(u"", u"");
    unread.beginNextBox();
    tmpRead(side, SndRcvFlag, count, unread);
}

}
