// The SQL statements of a rule. The rule's condition is inserted unescaped.
#include "filter/filter_results.h"
#include "filter/filter_rules.h"

namespace tolvek {

namespace {

// The engine's = distinguishes half and full width, so listing also compares with the
// full-width form. Deleting doesn't: a view may list mails that deleting won't remove.
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
        // No WHERE clause: listing visits every mail. Deleting must never run without
        // one.
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
