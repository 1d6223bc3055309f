#include "browse/delete_mail.h"

#include "app/database.h"
#include "app/guard.h"
#include "filter/filter_results.h"
#include "filter/filter_rules.h"
#include "platform/runtime/do_events.h"
#include "platform/runtime/msg_box.h"
#include "store/subject_keys.h"

namespace tolvek {

namespace {

void yieldAndClose()
{
    DoEvents();
    gDb.Close();
}

// The names are part of the condition, as they are where the mail is displayed: a mail
// that can't be displayed any more can't be deleted by its row either. The time is
// tested twice, which changes nothing; kept.
Statement deletionOfRow(const SubjectKey& key)
{
    Statement sql{u"DELETE FROM tblTolvek"};
    sql << u" WHERE tblTolvek_YMD = '" << key.YMD << u"' AND " << u"tblTolvek_HMS = '" << key.HMS
        << u"' AND " << u"tblTolvek_HMS = '" << key.HMS << u"' AND " << u"tblTolvek_SubKey = "
        << key.SubKey << u" AND " << u"tblTolvek_SndName = '" << key.SndName << u"' AND "
        << u"tblTolvek_SndAdd = '" << key.SndAdd << u"' AND " << u"tblTolvek_RcvName = '"
        << key.RcvName << u"' AND " << u"tblTolvek_RcvAdd = '" << key.RcvAdd << u"'";
    return sql;
}

// The types are gDisplayType's; the caller has excluded others.
Statement deletionOfEntry(Int16 type, const Text& key)
{
    Statement sql{u"DELETE FROM tblTolvek"};
    switch (type) {
    case 0:
        sql << u" WHERE tblTolvek_SndAdd = '" << key << u"' OR " << u" tblTolvek_RcvAdd = '" << key
            << u"'";
        break;
    case 1:
        sql << u" WHERE tblTolvek_SndName = '" << key << u"' OR " << u" tblTolvek_RcvName = '"
            << key << u"'";
        break;
    default:
        sql << u" WHERE tblTolvek_YMD = '" << key << u"' ";
    }
    return sql;
}

// For the mail named by the current row of the filter results. Names aren't compared
// here.
Statement deletionOfListed()
{
    Statement sql{u"DELETE FROM tblTolvek"};
    sql << u" WHERE tblTolvek_YMD = '" << gRs.field(u"tblFilterDt_Date").text()
        << u"' AND  tblTolvek_HMS = '" << gRs.field(u"tblFilterDt_Time").text()
        << u"' AND  tblTolvek_SubKey = " << gRs.field(u"tblFilterDt_SubKey").int16()
        << u" AND  tblTolvek_SndAdd = '" << gRs.field(u"tblFilterDt_SendAddr").text()
        << u"' AND  tblTolvek_RcvAdd = '" << gRs.field(u"tblFilterDt_RecvAddr").text() << u"' ;";
    return sql;
}

Statement resultsOf(const FilterRule& rule)
{
    Statement sql{u"SELECT * FROM tblFilterData"};
    sql << u" WHERE tblFilterDt_No = " << rule.No;
    return sql;
}

void deleteListed()
{
    for (; !gRs.Eof(); DoEvents()) {
        executeInTransaction(deletionOfListed());
        gRs.MoveNext();
    }
}

void deleteMailsOfRule(Int16 index)
{
    const Int16 code = gFilterRule[index].TermsCode;
    // Codes that compare whole texts have a single DELETE; the others go by the stored
    // results.
    if (code == 0 || code == 2 || code == 4) {
        Statement sql{u""};
        tblFilterData_SqlEdit(1, index, sql);
        delMail_024(index, sql);
    } else {
        delMail_13(index);
    }
}

}

void delOneMail(Int16 row)
{
    leaveOnError(u"delOneMail", [&] {
        const Statement sql = deletionOfRow(SubjectRowLocate(row));
        openArchive();
        executeInTransaction(sql);
        yieldAndClose();
    });
}

void delMail(Int16 type, const Text& key)
{
    leaveOnError(u"delMail", [&] {
        openArchive();
        if (type < 0 || type > 2) {
            // Kept: gDb stays open; the next routine opens it anew.
            MsgBox(u"Ｄｅｌｅｔｅ　Ｔｙｐｅ　Ｅｒｒｏｒ");
            return;
        }
        executeInTransaction(deletionOfEntry(type, key));
        yieldAndClose();
    });
}

void delFilter(Int16 index)
{
    leaveOnError(u"delFilter", [&] {
        // Reports its own failures, so the rule is deleted even when its mails weren't;
        // kept.
        deleteMailsOfRule(index);
        Statement sql{u"DELETE FROM tblFilter"};
        sql << u" WHERE tblFilter_No = " << gFilterRule[index].No;
        openArchive();
        executeInTransaction(sql);
        gDb.Close();
    });
}

void delMail_13(Int16 index)
{
    leaveOnError(u"delMail_13", [&] {
        openArchive();
        gRs = gDb.OpenRecordset(resultsOf(gFilterRule[index]), dbOpenDynaset);
        DoEvents();
        Int16 count = 0;
        GET_RECCNT(gRs, count);
        if (count != 0) deleteListed();
        gDb.Close();
    });
}

void delMail_024(Int16 /*index*/, const Statement& sql)
{
    leaveOnError(u"delMail_024", [&] {
        openArchive();
        executeInTransaction(sql);
        yieldAndClose();
    });
}

}
