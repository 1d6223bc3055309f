#include "filter/filter_rules.h"

#include "app/database.h"
#include "app/guard.h"
#include "app/state.h"
#include "platform/forms/input_hold.h"
#include "platform/runtime/do_events.h"
#include "store/open_or_create.h"
#include "store/text_dump.h"

namespace tolvek {

CheckedArray<FilterRule, 256> gFilterRule;
Int16 gFilterRuleCnt;
CheckedArray<FilterRule, 256> gNonCopyRule;
Int16 gNonCopyRuleCnt;
bool gFilterRulesWhole = true;

FilterRule currentFilterRule()
{
    return {gRs.field(0).int16(), gRs.field(1).int16(), gRs.field(2).int16(), gRs.field(3).text(),
            gRs.field(4).text()};
}

void emptyFilterRules()
{
    for (int i = 0; i < gFilterRule.size() - 1; ++i)
        gFilterRule[i] = FilterRule{};
}

namespace {

void takeRow()
{
    FilterRule& rule = gFilterRule[gFilterRuleCnt]; // error 9 at the 257th row
    rule = currentFilterRule();
    // The rules to keep mails out at import have an array of their own.
    if (rule.ActionCode != 0) {
        gNonCopyRule[gNonCopyRuleCnt] = rule;
        ++gNonCopyRuleCnt;
    }
    gRs.MoveNext();
    ++gFilterRuleCnt;
    DoEvents();
}

// GET_RECCNT reports its own failures and closes gDb. The Eof() below then throws, so a
// half-read table can't pass for a complete or an empty one.
void readRules()
{
    Statement sql{u"SELECT * FROM tblFilter"};
    sql << u" ORDER By " << u" tblFilter_ActionCode ASC, tblFilter_No ASC ";
    gRs = gDb.OpenRecordset(sql, dbOpenDynaset);
    emptyFilterRules();
    Int16 count = 0;
    GET_RECCNT(gRs, count);
    while (!gRs.Eof())
        takeRow();
}

// The texts are inserted unescaped: the editor refuses ' and |.
void insertRule(const FilterRule& rule)
{
    Statement sql{u"INSERT INTO tblFilter ( tblFilter_No,tblFilter_TermsCode,tblFilter_ActionCode,"
                  u"tblFilter_Header,tblFilter_Data ) VALUES( "};
    sql << rule.No << u", " << rule.TermsCode << u", " << rule.ActionCode << u", '" << rule.Header
        << u"', '" << rule.Data << u"' )";
    executeInTransaction(sql);
}

// Returns the number of entries that weren't written.
Int16 writeRules()
{
    Int16 blank = 0;
    Int16 number = 0;
    for (int i = 0; i < gFilterRuleCnt; ++i) {
        // A blank entry uses up its number; this is kept.
        number += 10;
        if (trim(gFilterRule[i].Header).empty()) {
            ++blank;
            continue;
        }
        gFilterRule[i].No = number;
        insertRule(gFilterRule[i]);
    }
    return blank;
}

}

void tblFilter_Get()
{
    const InputHold hold;
    gFilterRulesWhole = false;
    gFilterRulesWhole = leaveOnError(u"tblFilter_Get", [] {
        setStatusLines(u"　振り分け処理を行っています。", u"　少々お待ちください。", u"", u"", u"",
                       u"");
        gFilterRuleCnt = 0;
        gNonCopyRuleCnt = 0;
        openOrAskToCreate(u"tblFilter Get");
        readRules();
        gDb.Close();
    });
}

// Kept: each statement is a transaction of its own, so the delete stays even if a later
// insert fails.
void tblFilter_UpDate()
{
    if (!gFilterRulesWhole) return;
    leaveOnError(u"tblFilter_UpDate", [] {
        openArchive();
        executeInTransaction(Statement{u"DELETE FROM tblFilter"});
        const Int16 blank = writeRules();
        // The entries that weren't written don't count any more.
        gFilterRuleCnt -= blank;
        gDb.Close();
        tblFilter_Get();
    });
}

namespace {

// Kept: gNonCopyRule isn't emptied; the next tblFilter_Get fills it.
void resetRules()
{
    emptyFilterRules();
    gFilterRuleCnt = 0;
}

// Throws error 9 at the 257th record. That record isn't stored then, so the table never
// holds more rules than the array can.
void takeRule(const FilterRecord& record)
{
    gFilterRule[gFilterRuleCnt] = {record.no, record.termsCode, record.actionCode, record.header,
                                   record.data};
    ++gFilterRuleCnt;
}

}

void tblFilter_Load()
{
    loadFilterTable({resetRules, takeRule});
}

}
