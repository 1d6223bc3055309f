
#include "filter/filter_rules.h"
#include "platform/runtime/codepage932.h"
#include "store/database_files.h"
#include "store/text_dump.h"
#include "support/archive_fixture.h"
#include "support/report_list.h"

namespace tolvek::test {
namespace {

class FilterRulesLoadTest : public ArchiveFixture {
protected:
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        for (int i = 0; i < 256; ++i)
            gFilterRule[i].Header = u"old";
        gFilterRuleCnt = 7;
        gNonCopyRule = {};
        gNonCopyRule[0].Header = u"kept out";
        gNonCopyRuleCnt = 1;
        reports.listen();
    }
    void TearDown() override
    {
        EXPECT_EQ(reports.take(), Reports{});
        gFilterRule = {};
        gNonCopyRule = {};
        gFilterRuleCnt = gNonCopyRuleCnt = 0;
        ArchiveFixture::TearDown();
    }
    void givenText(const Text& content) const
    {
        writeBytes(file("tblFilter.txt"), toAnsi(content));
    }
    static Text records(int count)
    {
        Text all;
        for (int n = 1; n <= count; ++n)
            all += decimal(10 * n) + u",0,0,\"h\",\"d\"\r\n";
        return all;
    }
    static std::vector<Text> storedNumbers()
    {
        return column(u"SELECT tblFilter_No FROM tblFilter ORDER By tblFilter_No ASC");
    }

    ReportList reports;
};

TEST_F(FilterRulesLoadTest, TheTableAndTheMemoryHoldTheRulesOfTheFile)
{
    addFilter(99, 0, 0, u"before", u"x");
    givenText(u"10,3,0,\"一\",\"a, b\"\r\n20,1,1,\"二\",\"b\"\r\n");
    tblFilter_Load();
    EXPECT_EQ(storedNumbers(), (std::vector<Text>{u"10", u"20"}));
    EXPECT_EQ(value(u"SELECT tblFilter_Data FROM tblFilter WHERE (tblFilter_No = 10)"), u"a, b");
    ASSERT_EQ(gFilterRuleCnt, 2);
    EXPECT_EQ(gFilterRule[0].No, 10);
    EXPECT_EQ(gFilterRule[0].TermsCode, 3);
    EXPECT_EQ(gFilterRule[0].ActionCode, 0);
    EXPECT_EQ(gFilterRule[0].Header, u"一");
    EXPECT_EQ(gFilterRule[0].Data, u"a, b");
    EXPECT_EQ(gFilterRule[1].ActionCode, 1);
}

// The list of the do-not-read rules is only filled by the next reading.
TEST_F(FilterRulesLoadTest, TheOtherEntriesAreEmptiedButTheLast)
{
    givenText(u"10,1,1,\"一\",\"a\"\r\n");
    tblFilter_Load();
    for (int i = 1; i < 255; ++i) {
        EXPECT_EQ(gFilterRule[i].No, 9999);
        EXPECT_EQ(gFilterRule[i].TermsCode, 99);
        EXPECT_EQ(gFilterRule[i].ActionCode, 99);
        EXPECT_EQ(gFilterRule[i].Header, u"");
    }
    EXPECT_EQ(gFilterRule[255].Header, u"old");
    EXPECT_EQ(gNonCopyRuleCnt, 1);
    EXPECT_EQ(gNonCopyRule[0].Header, u"kept out");
}

TEST_F(FilterRulesLoadTest, AnEmptyFileEmptiesBoth)
{
    addFilter(10, 0, 0, u"before", u"x");
    givenText(u"");
    tblFilter_Load();
    EXPECT_EQ(gFilterRuleCnt, 0);
    EXPECT_EQ(gFilterRule[0].No, 9999);
    EXPECT_EQ(rows(u"tblFilter"), 0);
}

TEST_F(FilterRulesLoadTest, WithoutTheFileBothStayAsTheyAre)
{
    addFilter(10, 0, 0, u"before", u"x");
    tblFilter_Load();
    EXPECT_EQ(gFilterRuleCnt, 7);
    EXPECT_EQ(gFilterRule[0].Header, u"old");
    EXPECT_EQ(rows(u"tblFilter"), 1);
}

TEST_F(FilterRulesLoadTest, AsManyRecordsAsMemoryHoldsAreTaken)
{
    givenText(records(256));
    tblFilter_Load();
    EXPECT_EQ(gFilterRuleCnt, 256);
    EXPECT_EQ(gFilterRule[255].No, 2560);
    EXPECT_EQ(rows(u"tblFilter"), 256);
}

TEST_F(FilterRulesLoadTest, OneMoreIsStoredNowhere)
{
    givenText(records(258));
    tblFilter_Load();
    EXPECT_EQ(reports.take(), Reports{"tblFilter_Load 9"});
    EXPECT_EQ(gFilterRuleCnt, 256);
    EXPECT_EQ(rows(u"tblFilter"), 256);
    EXPECT_FALSE(gDb.isOpen());
    EXPECT_EQ(freeFile(), 1);
}

TEST_F(FilterRulesLoadTest, AMissingDatabaseIsAskedForUnderItsOwnTitle)
{
    removeDatabase(gDbPath);
    givenText(records(1));
    const std::string question = "tblFilter Load: ＤＢがありません。\r\nＤＢを作成しますか？";
    tblFilter_Load();
    EXPECT_EQ(reports.take(), (Reports{question, "tblFilter_Load 3024"}));
    EXPECT_EQ(gFilterRule[0].Header, u"old") << "what can't be loaded takes no rules away";
    reports.listen(MsgAnswer::Yes);
    tblFilter_Load();
    EXPECT_EQ(reports.take(), Reports{question});
    EXPECT_EQ(storedNumbers(), std::vector<Text>{u"10"});
    EXPECT_EQ(gFilterRuleCnt, 1);
}

TEST_F(FilterRulesLoadTest, RulesGoOutAndBackInNumberedAnew)
{
    addFilter(20, 5, 0, u"三", u"c");
    addFilter(5, 0, 0, u"一", u"a");
    addFilter(7, 1, 1, u"二", u"b");
    tblFilter_UnLoad();
    tblFilter_Load();
    EXPECT_EQ(storedNumbers(), (std::vector<Text>{u"10", u"20", u"30"}));
    EXPECT_EQ(gFilterRuleCnt, 3);
    EXPECT_EQ(gFilterRule[2].Header, u"三");
    EXPECT_EQ(gFilterRule[2].No, 30);
}

}
}
