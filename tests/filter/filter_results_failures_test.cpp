// Failures while the filter results are built, and how far each reaches.
#include "filter_results_fixture.h"
#include "store/database_files.h"

namespace tolvek::test {
namespace {

using FilterResultsFailuresTest = FilterResultsTest;

// ---- missing values, and hostile ones ----

TEST_F(FilterResultsFailuresTest, AFieldWithoutAValueHoldsNothingAndHarmsNoOtherTerm)
{
    rawMail(std::nullopt, u"太郎");
    addRule(1, u"");
    addRule(1, u"件");
    addRule(3, u"a@x");
    run();
    EXPECT_TRUE(listed(10).empty());
    EXPECT_TRUE(listed(20).empty());
    EXPECT_EQ(listed(30), std::vector<int>{1});
    EXPECT_EQ(subjects(), Texts{u""});
}

TEST_F(FilterResultsFailuresTest, ANameWithoutAValueIsPassedOver)
{
    rawMail(u"件名", std::nullopt);
    addRule(5, u"太郎");
    addRule(4, u"太郎");
    run();
    EXPECT_EQ(rows(u"tblFilterData"), 0);
}

// The other party's name selects the mail. The missing name becomes an empty text,
// which the table doesn't accept; that ends the rule.
TEST_F(FilterResultsFailuresTest, AMailFoundByItsOtherNameCantBeListedWithoutTheFirst)
{
    rawMail(u"件名", std::nullopt);
    addRule(5, u"花");
    addRule(4, u"花子");
    addRule(3, u"a@x");
    ReportList reports;
    reports.listen();
    run();
    EXPECT_EQ(reports.take(), (Reports{"tblFilterData_Set13 3315", "tblFilterData_Set024 3315",
                                       "tblFilterData_Set13 3315"}));
    EXPECT_EQ(rows(u"tblFilterData"), 0);
}

TEST_F(FilterResultsFailuresTest, BarsNULsAndStatementsInTextsAreTextsAndAreListedAsTheyStand)
{
    const Texts hostile{u"a|b", Text(u"a\0b", 3), u"\"; DROP TABLE tblTolvek; --", u"%_*?[a]#",
                        u"<b>&amp;</b>"};
    for (const Text& text : hostile)
        mailWith(text, u"a@x.jp", u"b@x.jp", text);
    for (const Text& text : hostile) {
        gFilterRuleCnt = 0;
        for (const int code : {0, 1, 4, 5})
            addRule(code, text);
        run();
        const Text listedName = column(u"SELECT tblFilterDt_SendName FROM tblFilterData").front();
        EXPECT_EQ(listedName, text) << toUtf8(text);
        EXPECT_EQ(subjects(), (Texts{text + u" ", text, text + u" ", text})) << toUtf8(text);
    }
    EXPECT_EQ(rows(u"tblTolvek"), 5);
}

TEST_F(FilterResultsFailuresTest, AQuoteInAStoredFieldCostsTheRestOfTheRuleAndTheNextOneFollows)
{
    mailWith(u"件名一");
    rawMail(u"件名'); DROP TABLE tblTolvek; --", u"太郎");
    mailWith(u"件名三");
    addRule(1, u"件名");
    addRule(2, u"a@x.jp");
    addRule(1, u"三");
    ReportList reports;
    reports.listen();
    run();
    EXPECT_EQ(reports.take(), (Reports{"tblFilterData_Set13 3075", "tblFilterData_Set024 3075"}));
    EXPECT_EQ(listed(10), std::vector<int>{1});
    EXPECT_EQ(listed(20), std::vector<int>{1});
    EXPECT_EQ(listed(30), std::vector<int>{3});
    EXPECT_EQ(rows(u"tblTolvek"), 3);
}

TEST_F(FilterResultsFailuresTest, AQuoteInAConditionFailsItsRuleAlone)
{
    mailWith(u"ABC");
    addRule(0, u"' OR 'a' = 'a");
    addRule(1, u"' OR 'a' = 'a");
    addRule(0, u"ABC");
    ReportList reports;
    reports.listen();
    run();
    EXPECT_EQ(reports.take(), Reports{"tblFilterData_Set024 3075"});
    EXPECT_TRUE(listed(10).empty());
    EXPECT_TRUE(listed(20).empty());
    EXPECT_EQ(listed(30), std::vector<int>{1});
}

// ---- failures ----

TEST_F(FilterResultsFailuresTest, ARuleWithoutAHeaderIsToldAndTheNextOneFollows)
{
    mailWith(u"ABC");
    addRule(0, u"ABC", 0, u" 　");
    addRule(1, u"ABC", 0, u"");
    addRule(1, u"ABC");
    ReportList reports;
    reports.listen();
    run();
    EXPECT_EQ(reports.take(), (Reports{"tblFilterData_Set024 3075", "tblFilterData_Set13 3075"}));
    EXPECT_EQ(listed(30), std::vector<int>{1});
}

TEST_F(FilterResultsFailuresTest, MoreMailsThanSixteenBitsCountFailEachRuleTwiceAndListNothing)
{
    manyMails(32768);
    addRule(1, u"件名");
    addRule(0, u"件名");
    addRule(2, u"other@x.jp");
    ReportList reports;
    reports.listen();
    run();
    EXPECT_EQ(reports.take(), (Reports{"GET_RECCNT 6", "tblFilterData_Set13 3420", "GET_RECCNT 6",
                                       "tblFilterData_Set024 3420"}));
    EXPECT_EQ(rows(u"tblFilterData"), 0);
    EXPECT_EQ(rows(u"tblTolvek"), 32768);
}

TEST_F(FilterResultsFailuresTest, AsManyMailsAsSixteenBitsCountAreWalkedInFull)
{
    manyMails(32767);
    mailWith(u"x");
    execute(Statement{u"DELETE FROM tblTolvek WHERE tblTolvek_YMD = '10000000'"});
    addRule(1, u"x");
    addRule(1, u"y");
    run();
    EXPECT_EQ(ids(), Texts{u"32766"});
    EXPECT_EQ(gFilterDataId, 2 * 32767);
}

TEST_F(FilterResultsFailuresTest, OneRuleMoreThanTheTableHoldsEndsTheLoadAndTheOthersAreWorked)
{
    mailWith(u"ABC");
    for (int n = 1; n <= 257; ++n)
        addFilter(n, 1, 0, u"見出し", n == 256 ? u"ABC" : u"none");
    ReportList reports;
    reports.listen();
    tblFilter_Get();
    EXPECT_EQ(reports.take(), Reports{"tblFilter_Get 9"});
    run();
    EXPECT_EQ(listed(256), std::vector<int>{1});
    EXPECT_EQ(ids(), Texts{u"255"});
}

TEST_F(FilterResultsFailuresTest, ACountBeyondTheTableEndsTheBuildWithAnEmptyTable)
{
    mailWith(u"ABC");
    addRule(0, u"ABC");
    run();
    gFilterRuleCnt = 257;
    ReportList reports;
    reports.listen();
    run();
    EXPECT_EQ(reports.take(), Reports{"tblFilterData_Sel 9"});
    EXPECT_EQ(rows(u"tblFilterData"), 0);
}

TEST_F(FilterResultsFailuresTest, AMissingDatabaseIsToldByTheBuildWithoutAQuestion)
{
    removeDatabase(gDbPath);
    addRule(0, u"ABC");
    ReportList reports;
    reports.listen();
    run();
    EXPECT_EQ(reports.take(), Reports{"tblFilterData_Sel 3024"});
    EXPECT_FALSE(databaseExists(gDbPath));
}

struct Family {
    void (*set)(Int16, const Statement&);
    TextView title, routine;
};

const Family kFamilies[] = {
    {tblFilterData_Set024, u"tblfilter Data Set 024", u"tblFilterData_Set024"},
    {tblFilterData_Set13, u"tblfilter Data Set 13", u"tblFilterData_Set13"},
};

TEST_F(FilterResultsFailuresTest, ADatabaseThatWentMissingIsOfferedToBeCreatedAndTheRuleGoesOn)
{
    addRule(0, u"ABC");
    for (const Family& family : kFamilies) {
        removeDatabase(gDbPath);
        boxes.expect(u"ＤＢがありません。\r\nＤＢを作成しますか？", MsgAnswer::Yes,
                     Text(family.title));
        family.set(0, Statement{u"SELECT * FROM tblTolvek"});
        EXPECT_TRUE(databaseExists(gDbPath));
        EXPECT_FALSE(gDb.isOpen());
    }
}

TEST_F(FilterResultsFailuresTest, ARefusedCreationIsReported)
{
    addRule(0, u"ABC");
    removeDatabase(gDbPath);
    for (const Family& family : kFamilies) {
        boxes.expect(u"ＤＢがありません。\r\nＤＢを作成しますか？", MsgAnswer::No,
                     Text(family.title));
        boxes.expect(u"エラー番号： 3024\r\n（" + errorText(3024, gDbPath) + u"）", MsgAnswer::Ok,
                     u"エラーメッセージ (" + Text(family.routine) + u")");
        family.set(0, Statement{u"SELECT * FROM tblTolvek"});
        EXPECT_FALSE(databaseExists(gDbPath));
    }
}

}
}
