#include "filter/filter_rules.h"
#include "platform/runtime/test_hooks.h"

#include "many_rules.h"
#include "platform/forms/input_hold.h"
#include "store/database_files.h"
#include "support/archive_fixture.h"
#include "support/yield_watch.h"

namespace tolvek::test {
namespace {

class FilterRulesTest : public ArchiveFixture {
protected:
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        gFilterRule = {};
        gNonCopyRule = {};
        gFilterRuleCnt = 0;
        gNonCopyRuleCnt = 0;
        gFilterRulesWhole = true;
    }
    static FilterRule rule(const Text& header, const Text& data, int terms = 0, int action = 0)
    {
        FilterRule made;
        made.No = 0; // as an entry being edited has it
        made.TermsCode = terms;
        made.ActionCode = action;
        made.Header = header;
        made.Data = data;
        return made;
    }
    static void inMemory(const std::vector<FilterRule>& rules)
    {
        for (const FilterRule& one : rules) {
            gFilterRule[gFilterRuleCnt] = one;
            ++gFilterRuleCnt;
        }
    }
    static std::vector<Text> storedNumbers()
    {
        return column(u"SELECT tblFilter_No FROM tblFilter ORDER By tblFilter_No ASC");
    }
    static void expectEmpty(const FilterRule& entry)
    {
        EXPECT_EQ(entry.No, 9999);
        EXPECT_EQ(entry.TermsCode, 99);
        EXPECT_EQ(entry.ActionCode, 99);
        EXPECT_EQ(entry.Header, u"");
        EXPECT_EQ(entry.Data, u"");
    }
};

TEST_F(FilterRulesTest, AnEmptyTableGivesEmptyEntriesButTheLast)
{
    for (int i = 0; i < 256; ++i)
        gFilterRule[i] = rule(u"old", u"old");
    gFilterRuleCnt = 7;
    gNonCopyRuleCnt = 3;
    tblFilter_Get();
    EXPECT_EQ(gFilterRuleCnt, 0);
    EXPECT_EQ(gNonCopyRuleCnt, 0);
    for (int i = 0; i < 255; ++i)
        expectEmpty(gFilterRule[i]);
    EXPECT_EQ(gFilterRule[255].Header, u"old");
}

TEST_F(FilterRulesTest, SortingRulesComeFirstEachGroupByNumber)
{
    addFilter(30, 0, 0, u"三", u"c");
    addFilter(10, 1, 1, u"一", u"a");
    addFilter(20, 2, 0, u"二", u"b");
    gNonCopyRule[1].Header = u"stays behind the new count";
    tblFilter_Get();
    ASSERT_EQ(gFilterRuleCnt, 3);
    EXPECT_EQ(gFilterRule[0].No, 20);
    EXPECT_EQ(gFilterRule[1].No, 30);
    EXPECT_EQ(gFilterRule[2].No, 10);
    EXPECT_EQ(gFilterRule[2].TermsCode, 1);
    EXPECT_EQ(gFilterRule[2].ActionCode, 1);
    EXPECT_EQ(gFilterRule[2].Header, u"一");
    EXPECT_EQ(gFilterRule[2].Data, u"a");
    ASSERT_EQ(gNonCopyRuleCnt, 1);
    EXPECT_EQ(gNonCopyRule[0].No, 10);
    EXPECT_EQ(gNonCopyRule[1].Header, u"stays behind the new count");
}

TEST_F(FilterRulesTest, TheStatusLinesAreOverwritten)
{
    setStatusLines(u"a", u"b", u"c", u"d", u"e", u"f");
    tblFilter_Get();
    EXPECT_EQ(gStatusLines[0], u"　振り分け処理を行っています。");
    EXPECT_EQ(gStatusLines[1], u"　少々お待ちください。");
    for (int i = 2; i < 6; ++i)
        EXPECT_EQ(gStatusLines[i], u"");
}

TEST_F(FilterRulesTest, ABlankEntryUsesUpItsNumber)
{
    inMemory({rule(u"一", u"a"), rule(u" 　", u"b"), rule(u"三", u"c"), rule(u"四", u"d")});
    tblFilter_UpDate();
    EXPECT_EQ(storedNumbers(), (std::vector<Text>{u"10", u"30", u"40"}));
    EXPECT_EQ(gFilterRuleCnt, 3);
    tblFilter_UpDate();
    EXPECT_EQ(storedNumbers(), (std::vector<Text>{u"10", u"20", u"30"}));
}

TEST_F(FilterRulesTest, ARuleThatChangesItsActionMovesToTheOtherGroup)
{
    inMemory({rule(u"一", u"a", 0, 1), rule(u"二", u"b"), rule(u"三", u"c", 3, 1)});
    tblFilter_UpDate();
    EXPECT_EQ(gFilterRule[0].Header, u"二");
    EXPECT_EQ(gFilterRule[1].Header, u"一");
    EXPECT_EQ(gFilterRule[2].Header, u"三");
    EXPECT_EQ(gNonCopyRuleCnt, 2);
}

TEST_F(FilterRulesTest, AsManyRulesAsTheTableHoldsLoadInFull)
{
    givenMany(256);
    tblFilter_Get();
    EXPECT_EQ(gFilterRuleCnt, 256);
    EXPECT_EQ(gFilterRule[255].No, 2560);
}

TEST_F(FilterRulesTest, OneMoreStopsTheLoadWithWhatWasRead)
{
    givenMany(257);
    boxes.expect(u"エラー番号： 9\r\n（" + errorText(9) + u"）", MsgAnswer::Ok,
                 u"エラーメッセージ (tblFilter_Get)");
    tblFilter_Get();
    EXPECT_EQ(gFilterRuleCnt, 256);
    EXPECT_EQ(gFilterRule[255].No, 2560);
    EXPECT_FALSE(gDb.isOpen());
}

TEST_F(FilterRulesTest, AFailedInsertKeepsWhatWasWrittenAndReadsNothingAnew)
{
    addFilter(10, 0, 0, u"before", u"x");
    inMemory({rule(u"一", u"a"), rule(u"it's", u"b"), rule(u"三", u"c")});
    hooks::setMsgBox([](const MsgBoxRequest& box) {
        EXPECT_EQ(box.title, u"エラーメッセージ (tblFilter_UpDate)");
        EXPECT_EQ(box.text.find(u"エラー番号： 3075"), 0u);
        return MsgAnswer::Ok;
    });
    tblFilter_UpDate();
    EXPECT_EQ(storedNumbers(), std::vector<Text>{u"10"});
    EXPECT_EQ(value(u"SELECT tblFilter_Header FROM tblFilter"), u"一");
    EXPECT_EQ(gFilterRuleCnt, 3);
    EXPECT_EQ(gFilterRule[1].Header, u"it's");
}

TEST_F(FilterRulesTest, AMissingDatabaseIsOfferedToBeCreated)
{
    removeDatabase(gDbPath);
    boxes.expect(u"ＤＢがありません。\r\nＤＢを作成しますか？", MsgAnswer::Yes, u"tblFilter Get");
    tblFilter_Get();
    EXPECT_TRUE(databaseExists(gDbPath));
    EXPECT_EQ(gFilterRuleCnt, 0);
}

TEST_F(FilterRulesTest, ARefusedCreationIsReported)
{
    removeDatabase(gDbPath);
    boxes.expect(u"ＤＢがありません。\r\nＤＢを作成しますか？", MsgAnswer::No, u"tblFilter Get");
    boxes.expect(u"エラー番号： 3024\r\n（" + errorText(3024, gDbPath) + u"）", MsgAnswer::Ok,
                 u"エラーメッセージ (tblFilter_Get)");
    tblFilter_Get();
    EXPECT_FALSE(databaseExists(gDbPath));
}

TEST_F(FilterRulesTest, WritingIntoAMissingDatabaseAsksNothing)
{
    removeDatabase(gDbPath);
    inMemory({rule(u"一", u"a")});
    boxes.expect(u"エラー番号： 3024\r\n（" + errorText(3024, gDbPath) + u"）", MsgAnswer::Ok,
                 u"エラーメッセージ (tblFilter_UpDate)");
    tblFilter_UpDate();
    EXPECT_EQ(gFilterRuleCnt, 1);
}

TEST_F(FilterRulesTest, ReadingYieldsAtEachRuleWithTheUsersInputKeptBack)
{
    for (const int number : {10, 20, 30})
        addFilter(number, 0, 0, u"一", u"a");
    const auto isHeld = [] { EXPECT_TRUE(InputHold::isHeld()); };
    {
        const YieldWatch yields(isHeld);
        tblFilter_Get();
        EXPECT_EQ(yields.count(), 3 + 3) << "counted, then read";
    }
    const YieldWatch yields(isHeld);
    tblFilter_UpDate();
    EXPECT_EQ(yields.count(), 3 + 3) << "read back";
}

}
}
