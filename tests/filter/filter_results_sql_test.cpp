#include "filter_results_fixture.h"

namespace tolvek::test {
namespace {

using FilterResultsSqlTest = FilterResultsTest;

TEST_F(FilterResultsSqlTest, TheStatementOfARuleByItsCodeAndTheMode)
{
    struct Case {
        int code;
        TextView select, remove;
    };
    const Case cases[] = {
        {0,
         u"SELECT * FROM tblTolvek WHERE tblTolvek_Subject = 'a1' OR tblTolvek_Subject = 'ａ１' ",
         u"DELETE FROM tblTolvek WHERE tblTolvek_Subject = 'a1' "},
        {2, u"SELECT * FROM tblTolvek WHERE tblTolvek_SndAdd = 'a1' or tblTolvek_RcvAdd ='a1' ",
         u"DELETE FROM tblTolvek WHERE tblTolvek_SndAdd = 'a1' or tblTolvek_RcvAdd ='a1' "},
        {4, u"SELECT * FROM tblTolvek WHERE tblTolvek_SndName = 'a1' or tblTolvek_RcvName ='a1' ",
         u"DELETE FROM tblTolvek WHERE tblTolvek_SndName = 'a1' or tblTolvek_RcvName ='a1' "},
        {1, u"SELECT * FROM tblTolvek", u""},
        {3, u"SELECT * FROM tblTolvek", u""},
        {5, u"SELECT * FROM tblTolvek", u""},
        {99, u"SELECT * FROM tblTolvek", u""},
    };
    const auto statement = [](int mode) {
        Statement sql{u"what stood there"};
        tblFilterData_SqlEdit(mode, 0, sql);
        return sql.text();
    };
    for (const Case& c : cases) {
        gFilterRuleCnt = 0;
        addRule(c.code, u"a1");
        EXPECT_EQ(statement(0), c.select) << c.code;
        EXPECT_EQ(statement(1), c.remove) << c.code;
        EXPECT_EQ(statement(2), u"") << c.code;
        gFilterRule[0].Header = u"　 ";
        EXPECT_EQ(statement(0), u"") << c.code;
        EXPECT_EQ(statement(1), u"") << c.code;
    }
}

}
}
