#include "browse/subject_list.h"

#include "app/database.h"
#include "app/guard.h"
#include "app/settings.h"
#include "app/state.h"
#include "browse/mail_view.h"
#include "browse/subject_line.h"
#include "filter/filter_rules.h"
#include "platform/runtime/do_events.h"
#include "platform/runtime/msg_box.h"
#include "store/subject_keys.h"
#include "window/frm_tolvek.h"
#include "window/status.h"

namespace tolvek {

namespace {

// The column names of a row: in the mail table or in the filter results.
struct SubjectSource {
    TextView ymd, hms, subKey, sndRcvFlag, sndName, sndAdd, rcvName, rcvAdd, subject;
};

constexpr SubjectSource kMails{u"tblTolvek_YMD",        u"tblTolvek_HMS",     u"tblTolvek_SubKey",
                               u"tblTolvek_SndRcvFlag", u"tblTolvek_SndName", u"tblTolvek_SndAdd",
                               u"tblTolvek_RcvName",    u"tblTolvek_RcvAdd",  u"tblTolvek_Subject"};
constexpr SubjectSource kFilterResults{
    u"tblFilterDt_Date",       u"tblFilterDt_Time",     u"tblFilterDt_SubKey",
    u"tblFilterDt_SndRcvFlag", u"tblFilterDt_SendName", u"tblFilterDt_SendAddr",
    u"tblFilterDt_RecvName",   u"tblFilterDt_RecvAddr", u"tblFilterDt_Subject"};

Statement mailsOfAddress(const Text& key)
{
    Statement sql{u"SELECT * FROM tblTolvek"};
    sql << u" WHERE ( tblTolvek_SndAdd = '" << key << u"' ) or (" << u"tblTolvek_RcvAdd = '" << key
        << u"' )" << u" ORDER By " << u" tblTolvek_YMD ASC, " << u" tblTolvek_HMS ASC, "
        << u" tblTolvek_SubKey ASC";
    return sql;
}

// Kept: the sub key is ordered before the time, unlike in the other two lists.
Statement mailsOfName(const Text& key)
{
    Statement sql{u"SELECT * FROM tblTolvek"};
    sql << u" WHERE ( tblTolvek_SndName = '" << key << u"' ) or (" << u"tblTolvek_RcvName = '"
        << key << u"' )" << u" ORDER By " << u" tblTolvek_YMD ASC, " << u" tblTolvek_SubKey ASC, "
        << u" tblTolvek_HMS ASC ";
    return sql;
}

Statement mailsOfDate(const Text& key)
{
    Statement sql{u"SELECT * FROM tblTolvek"};
    sql << u" WHERE tblTolvek_YMD = '" << key << u"'" << u" ORDER By " << u" tblTolvek_HMS ASC, "
        << u" tblTolvek_SubKey ASC";
    return sql;
}

Statement mailsOfEntry(const Text& key)
{
    switch (gDisplayType) {
    case 0:
        return mailsOfAddress(key);
    case 1:
        return mailsOfName(key);
    default:
        return mailsOfDate(key);
    }
}

Statement resultsOfRule(Int16 index)
{
    Statement sql{u"SELECT * FROM tblFilterData"};
    sql << u" WHERE tblFilterDt_No = " << gFilterRule[index].No
        << u" ORDER By tblFilterDt_Date ASC, tblFilterDt_Time ASC ";
    return sql;
}

SubjectLine subjectLine(const Recordset& row, const SubjectSource& from)
{
    return {.YMD = row.field(from.ymd).text(),
            .HMS = row.field(from.hms).text(),
            .SubKey = row.field(from.subKey).int16(),
            .SndRcvFlag = row.field(from.sndRcvFlag).boolean(),
            .SndName = row.field(from.sndName).text(),
            .RcvName = row.field(from.rcvName).text(),
            .Subject = row.field(from.subject).text()};
}

SubjectKey subjectKey(const Recordset& row, const SubjectSource& from)
{
    return {.YMD = row.field(from.ymd).text(),
            .HMS = row.field(from.hms).text(),
            .SubKey = row.field(from.subKey).int16(),
            .SndRcvFlag = row.field(from.sndRcvFlag).boolean(),
            .SndName = row.field(from.sndName).text(),
            .SndAdd = row.field(from.sndAdd).text(),
            .RcvName = row.field(from.rcvName).text(),
            .RcvAdd = row.field(from.rcvAdd).text()};
}

void tellLimit()
{
    MsgBox(u"ＤＢに保存しているＭａｉｌが限界値を超えました。" + Text(kCrLf) + u"Tolvek.Mdb" +
           u" を ＢａｃｋＵｐして、ＤＢの再作成をして下さい。");
}

void fillRows(frmTolvek& form, const SubjectSource& from)
{
    startSubjectKeys();
    Int16 row = 0;
    // Kept: full-width digits here, half-width ones once a mail is shown.
    form.lblRecCount->setCaption(u"表示件数　：　" + toWide(decimal(gSubjectCount)) + u" 件");
    while (!gRs.Eof()) {
        Text text;
        edmsgSubject(subjectLine(gRs, from), text);
        form.lstSubject->setList(row, text);
        // The row table has a fixed size; the list ends with the row that fills it.
        if (!addSubjectKey(subjectKey(gRs, from))) {
            tellLimit();
            break;
        }
        gRs.MoveNext();
        ++row;
    }
    DoEvents();
}

void clearSubjects(frmTolvek& form)
{
    form.lstSubject->Clear();
    form.lblRecCount->setCaption(u"");
    form.txtMail->setText(u"");
    form.lblHead->setCaption(u"");
}

void fillFrom(frmTolvek& form, const Statement& sql, const SubjectSource& from)
{
    gRs = gDb.OpenRecordset(sql, dbOpenDynaset);
    gSubjectCount = 0;
    GET_RECCNT(gRs, gSubjectCount);
    if (gSubjectCount != 0) fillRows(form, from);
    gDb.Close();
}

}

void dspSubject(frmTolvek& form, const Text& key)
{
    leaveOnError(u"dspSubject", [&] {
        clearSubjects(form);
        gDb = DBEngine::OpenDatabase(gDbPath);
        fillFrom(form, mailsOfEntry(key), kMails);
    });
}

void dspSubject_Filter(frmTolvek& form, Int16 index)
{
    leaveOnError(u"dspSubject_Filter", [&] {
        clearSubjects(form);
        gDb = DBEngine::OpenDatabase(gDbPath);
        fillFrom(form, resultsOfRule(index), kFilterResults);
    });
}

void lstSubject_Click(frmTolvek& form)
{
    ResumeNext on{u"lstSubject_Click"};
    on([&] { dspEnable(form, false, 0); });
    on([&] { dspMail(form, form.lstSubject->ListIndex()); });
    on([&] { dspEnable(form, gBackUpDisp != 1, gBackUpDisp); });
}

}
