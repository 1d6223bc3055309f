// The statements behind a rule. Its condition goes in as it stands.
#include "filter/filter_results.h"
#include "filter/filter_rules.h"

namespace tolvek {

namespace {

// The engine's = makes no allowance for width, so listing looks for the
// full-width form too. Deleting doesn't: a view may list what it won't reach.
void whereSubject(Statement& sql, Int16 mode, const Text& condition)
{
    if (mode == 0)
        sql << u" WHERE tblTolvek_Subject = '" << condition << u"' OR" << u" tblTolvek_Subject = '"
            << toWide(condition) << u"' ";
    else
        sql << u" WHERE tblTolvek_Subject = '" << condition << u"' ";
}

void whereAddress(Statement& sql, const Text& condition)
{
    sql << u" WHERE tblTolvek_SndAdd = '" << condition << u"' or tblTolvek_RcvAdd ='" << condition
        << u"' ";
}

void whereName(Statement& sql, const Text& condition)
{
    sql << u" WHERE tblTolvek_SndName = '" << condition << u"' or tblTolvek_RcvName ='" << condition
        << u"' ";
}

Statement opening(Int16 mode)
{
    return mode == 0 ? Statement{u"SELECT * FROM tblTolvek"} : Statement{u"DELETE FROM tblTolvek"};
}

Statement statementOf(const FilterRule& rule, Int16 mode)
{
    Statement sql = opening(mode);
    switch (rule.TermsCode) {
    case 0:
        whereSubject(sql, mode, rule.Data);
        return sql;
    case 2:
        whereAddress(sql, rule.Data);
        return sql;
    case 4:
        whereName(sql, rule.Data);
        return sql;
    default:
        // Without a condition: every mail is looked at, but never deleted.
        return mode == 0 ? sql : Statement{u""};
    }
}

}

void tblFilterData_SqlEdit(Int16 mode, Int16 index, Statement& sql)
{
    sql = Statement{u""};
    const FilterRule& rule = gFilterRule[index];
    if (trim(rule.Header).empty()) return;
    if (mode == 0 || mode == 1) sql = statementOf(rule, mode);
}

}
