#include "filter/filter_results.h"

#include "app/database.h"
#include "app/guard.h"
#include "app/state.h"
#include "filter/filter_rules.h"
#include "platform/runtime/do_events.h"
#include "store/open_or_create.h"

namespace tolvek {

std::int32_t gFilterDataId;

namespace {

// The field's text; Null becomes an empty text.
Text stored(TextView name)
{
    const Value value = gRs.field(name);
    return value.isNull() ? Text() : value.text();
}

// The part of the statement that both families share, up to the opening quote of the
// subject.
Statement insertUpToSubject(Int16 number)
{
    Statement sql{u"INSERT INTO tblFilterData ( tblFilterDt_Id, tblFilterDt_No, tblFilterDt_Date, "
                  u"tblFilterDt_Time, tblFilterDt_SubKey, tblFilterDt_SendName, "
                  u"tblFilterDt_SendAddr, tblFilterDt_RecvName, tblFilterDt_RecvAddr, "
                  u"tblFilterDt_SndRcvFlag, tblFilterDt_Subject ) VALUES( "};
    sql << gFilterDataId << u", " << number << u", '" << stored(u"tblTolvek_YMD") << u"', '"
        << stored(u"tblTolvek_HMS") << u"', '" << stored(u"tblTolvek_SubKey") << u"', '"
        << stored(u"tblTolvek_SndName") << u"', '" << stored(u"tblTolvek_SndAdd") << u"', '"
        << stored(u"tblTolvek_RcvName") << u"', '" << stored(u"tblTolvek_RcvAdd") << u"', "
        << gRs.field(u"tblTolvek_SndRcvFlag").boolean() << u", '";
    return sql;
}

// Searches inside the texts of the current row.
class PartialMatch {
public:
    // The full-width form is made once, not for each row.
    explicit PartialMatch(const FilterRule& rule) : rule_(rule), wide_(toWide(rule.Data)) {}

    bool selects() const
    {
        switch (rule_.TermsCode) {
        // Codes 0, 2 and 4 compare whole texts and don't get here.
        case 1:
            return holdsBytes(u"tblTolvek_Subject");
        case 3:
            return holds(u"tblTolvek_SndAdd") || holds(u"tblTolvek_RcvAdd");
        case 5:
            return holds(u"tblTolvek_SndName") || holds(u"tblTolvek_RcvName");
        default:
            return false;
        }
    }

private:
    // Subjects are compared byte by byte, so case and width count; for subjects alone the
    // full-width form is searched too. Null contains no text, not even the empty one.
    bool holdsBytes(TextView name) const
    {
        const Value value = gRs.field(name);
        if (value.isNull()) return false;
        const Text text = value.text();
        return inStrB(text, rule_.Data) != 0 || inStrB(text, wide_) != 0;
    }
    bool holds(TextView name) const
    {
        const Value value = gRs.field(name);
        return !value.isNull() && inStr(value.text(), rule_.Data, Compare::TextMode) != 0;
    }

    const FilterRule& rule_;
    Text wide_;
};

// The loop common to both families; `takeRow` is called for each row.
template <class TakeRow> void walkRows(TextView createTitle, const Statement& sql, TakeRow takeRow)
{
    gWs = DBEngine::Workspaces(0);
    openOrAskToCreate(createTitle);
    gRs = gDb.OpenRecordset(sql, dbOpenDynaset);
    DoEvents();
    Int16 count = 0;
    GET_RECCNT(gRs, count);
    if (count != 0) {
        // The id counts every row visited, stored or not. Set13 therefore leaves gaps,
        // which is kept.
        while (!gRs.Eof()) {
            takeRow();
            gRs.MoveNext();
            ++gFilterDataId;
            DoEvents();
        }
    }
    gDb.Close();
}

bool isSorting(int index)
{
    return gFilterRule[index].ActionCode == 0;
}

Int16 countSortingRules()
{
    Int16 count = 0;
    for (int i = 0; i < gFilterRuleCnt; ++i)
        if (isSorting(i)) ++count;
    return count;
}

void tellProgress(int index, Int16 count)
{
    gStatusLines[3] =
        u"   " + decimal(index + 1) + u" / " + decimal(count) + u"  のフィルターデータを";
    gStatusLines[4] = u"     処理中です。";
}

// An unknown code walks all mails and selects none.
void listMails(Int16 index)
{
    Statement sql{u""};
    tblFilterData_SqlEdit(0, index, sql);
    const Int16 code = gFilterRule[index].TermsCode;
    if (code == 0 || code == 2 || code == 4)
        tblFilterData_Set024(index, sql);
    else
        tblFilterData_Set13(index, sql);
}

}

// Kept quirk: here the subject is trimmed and followed by a blank, in
// tblFilterData_Set13 it is stored unchanged. Views and dumps have always shown this.
void tblFilterData_Set024(Int16 index, const Statement& sql)
{
    leaveOnError(u"tblFilterData_Set024", [&] {
        const FilterRule& rule = gFilterRule[index];
        walkRows(u"tblfilter Data Set 024", sql, [&] {
            Statement insert = insertUpToSubject(rule.No);
            executeInTransaction(insert << trim(stored(u"tblTolvek_Subject")) << u" ' )");
        });
    });
}

void tblFilterData_Set13(Int16 index, const Statement& sql)
{
    leaveOnError(u"tblFilterData_Set13", [&] {
        const FilterRule& rule = gFilterRule[index];
        const PartialMatch match(rule);
        walkRows(u"tblfilter Data Set 13", sql, [&] {
            if (!match.selects()) return;
            Statement insert = insertUpToSubject(rule.No);
            executeInTransaction(insert << stored(u"tblTolvek_Subject") << u"' )");
        });
    });
}

void tblFilterData_Sel()
{
    leaveOnError(u"tblFilterData_Sel", [] {
        openArchive();
        executeInTransaction(Statement{u"DELETE FROM tblFilterData"});
        gDb.Close();
        const Int16 count = countSortingRules();
        // The rows are deleted first and rebuilt rule by rule; they can be rebuilt at
        // any time, so a cut-off loses nothing.
        gFilterDataId = 0;
        for (int i = 0; i < gFilterRuleCnt; ++i) {
            // Do-not-read rules keep mails out at import and list nothing.
            if (!isSorting(i)) continue;
            tellProgress(i, count);
            listMails(i);
        }
    });
}

}
