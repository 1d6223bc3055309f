#include "platform/system/test_hooks.h"
#include "store/search_tables.h"

#include "support/archive_fixture.h"
#include "support/report_list.h"
#include "support/yield_watch.h"

namespace tolvek::test {
namespace {

class SearchTablesTest : public ArchiveFixture {
protected:
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        reports.listen();
    }
    void TearDown() override
    {
        EXPECT_EQ(takeReports(), Reports{});
        ArchiveFixture::TearDown();
    }
    Reports takeReports() { return reports.take(); }
    // Mails are returned in the order of insertion: each has a later date.
    void mail(const Text& sndName, const Text& rcvName, const Text& sndAdd = u"a@x.jp",
              const Text& rcvAdd = u"b@x.jp")
    {
        addRow({u"2000" + decimal(1000 + ++mails_), u"101112", 0, false, sndName, sndAdd, rcvName,
                rcvAdd});
    }
    // Stored without the statement builder, so that a value may contain a quote.
    static void addRow(const Mail& row)
    {
        Database opened = DBEngine::OpenDatabase(gDbPath);
        Recordset mails = opened.OpenRecordset(Statement{u"SELECT * FROM tblTolvek"});
        mails.AddNew();
        mails.setField(0, row.YMD);
        mails.setField(1, row.HMS);
        mails.setField(2, 0);
        mails.setField(3, 0);
        int position = 4;
        for (const Text& text : {row.SndName, row.SndAdd, row.RcvName, row.RcvAdd, row.Subject})
            mails.setField(position++, text);
        mails.Update();
        opened.Close();
    }
    static void addRows(int count)
    {
        Database opened = DBEngine::OpenDatabase(gDbPath);
        inTransaction([&] {
            for (int i = 0; i < count; ++i) {
                Statement sql{u"INSERT INTO tblTolvek (tblTolvek_YMD, tblTolvek_HMS, "
                              u"tblTolvek_SubKey, tblTolvek_SndRcvFlag, tblTolvek_SndName, "
                              u"tblTolvek_SndAdd, tblTolvek_RcvName, tblTolvek_RcvAdd) VALUES( '"};
                sql << decimal(10000000 + i) << u"', '101112', 0, False, 'a', 'a@x.jp', 'b', "
                    << u"'b@x.jp' )";
                opened.Execute(sql, dbFailOnError);
            }
        });
        opened.Close();
    }
    static std::vector<Text> names()
    {
        return column(u"SELECT tblSearch_Name_Data FROM tblSearch_Name");
    }
    static std::vector<Text> addresses()
    {
        return column(u"SELECT tblSearch_Addr_Data FROM tblSearch_Addresses");
    }

    ReportList reports;

private:
    int mails_ = 0;
};

TEST_F(SearchTablesTest, EndEmptyWithoutMails)
{
    mail(u"太郎", u"花子");
    edSearch_Name();
    edSearch_Addr();
    execute(Statement{u"DELETE FROM tblTolvek"});
    edSearch_Name();
    edSearch_Addr();
    EXPECT_TRUE(names().empty());
    EXPECT_TRUE(addresses().empty());
}

// The delete is the only statement that writes.
TEST_F(SearchTablesTest, WithoutMailsNoStatementRunsButTheDelete)
{
    const auto writesOf = [this](const std::function<void()>& work) {
        mail(u"太郎", u"花子");
        edSearch_Name();
        execute(Statement{u"DELETE FROM tblTolvek"});
        DBEngine::Rest();
        int writes = 0;
        hooks::setFileProbe([&](FileOperation operation, const Path&) {
            if (operation == FileOperation::Write || operation == FileOperation::Flush) ++writes;
        });
        work();
        hooks::setFileProbe({});
        return writes;
    };
    const int deleting = writesOf([] { execute(Statement{u"DELETE FROM tblSearch_Name "}); });
    EXPECT_GT(deleting, 0);
    int yields = 0;
    EXPECT_EQ(writesOf([&] { yields = yieldsOf(edSearch_Name); }), deleting);
    EXPECT_EQ(yields, 1) << "between the senders and the receivers";
}

// Senders are counted and listed; receivers are also looked up.
TEST_F(SearchTablesTest, YieldAtEachRow)
{
    mail(u"太郎", u"花子");
    mail(u"太郎", u"花子");
    EXPECT_EQ(yieldsOf(edSearch_Name), 2 + 2 + 1 + 2 + 2);
    mail(u"太郎", u"太郎"); // found by the look-up, which counts it
    EXPECT_EQ(yieldsOf(edSearch_Name), 3 + 3 + 1 + 3 + 3 + 1);
}

TEST_F(SearchTablesTest, ListEachNameAndEachAddressOnce)
{
    mail(u"太郎", u"花子", u"taro@x.jp", u"hanako@x.jp");
    mail(u"太郎", u"次郎", u"taro@x.jp", u"jiro@x.jp");
    mail(u"花子", u"太郎", u"hanako@x.jp", u"taro@x.jp");
    edSearch_Name();
    edSearch_Addr();
    EXPECT_EQ(names(), (std::vector<Text>{u"太郎", u"次郎", u"花子"}));
    EXPECT_EQ(addresses(), (std::vector<Text>{u"hanako@x.jp", u"jiro@x.jp", u"taro@x.jp"}));
}

TEST_F(SearchTablesTest, ListASenderWhoIsAlsoTheReceiverOnce)
{
    mail(u"ぼく", u"ぼく", u"me@x.jp", u"me@x.jp");
    edSearch_Name();
    edSearch_Addr();
    EXPECT_EQ(names(), std::vector<Text>{u"ぼく"});
    EXPECT_EQ(addresses(), std::vector<Text>{u"me@x.jp"});
}

TEST_F(SearchTablesTest, KeepTheSpellingThatTheOrderDeliversFirst)
{
    mail(u"TARO", u"hanako");
    mail(u"Taro", u"HANAKO");
    mail(u"taro", u"Taro");
    edSearch_Name();
    EXPECT_EQ(names(), (std::vector<Text>{u"hanako", u"TARO"}));
}

TEST_F(SearchTablesTest, GiveWidthAndKanaTypeTheirOwnRows)
{
    mail(u"タロウ", u"たろう");
    mail(u"ﾀﾛｳ", u"taro");
    mail(u"ｔａｒｏ", u"taro");
    edSearch_Name();
    EXPECT_EQ(names().size(), 5U);
}

TEST_F(SearchTablesTest, ListTheStandInLikeAnyValue)
{
    mail(u"設定無し", u"ぼく", u"設定無し", u"me@x.jp");
    edSearch_Name();
    edSearch_Addr();
    EXPECT_EQ(names(), (std::vector<Text>{u"ぼく", u"設定無し"}));
    EXPECT_EQ(addresses(), (std::vector<Text>{u"me@x.jp", u"設定無し"}));
}

TEST_F(SearchTablesTest, KeepTheAddressOfADeletedMailUntilTheyAreRebuilt)
{
    mail(u"太郎", u"花子", u"taro@x.jp", u"hanako@x.jp");
    edSearch_Addr();
    execute(Statement{u"DELETE FROM tblTolvek"});
    EXPECT_EQ(addresses().size(), 2U);
    edSearch_Addr();
    EXPECT_TRUE(addresses().empty());
}

TEST_F(SearchTablesTest, AreTwoTablesRebuiltOneByOne)
{
    mail(u"太郎", u"花子", u"taro@x.jp", u"hanako@x.jp");
    edSearch_Name();
    EXPECT_TRUE(addresses().empty());
    EXPECT_FALSE(gDb.isOpen());
}

TEST_F(SearchTablesTest, StopShortAtAValueWithAQuote)
{
    mail(u"aaa", u"zzz", u"a'@x.jp", u"b@x.jp");
    mail(u"o'neil", u"zzz");
    mail(u"taro", u"zzz");
    edSearch_Name();
    EXPECT_EQ(takeReports(), Reports{"edSearch_Name 3075"});
    EXPECT_EQ(names(), std::vector<Text>{u"aaa"});
    edSearch_Addr();
    EXPECT_EQ(takeReports(), Reports{"edSearch_Addr 3075"});
    EXPECT_FALSE(gDb.isOpen());
}

TEST_F(SearchTablesTest, FailTwiceWhenTheRowsAreMoreThanSixteenBitsCount)
{
    addRows(32768);
    edSearch_Name();
    EXPECT_EQ(takeReports(), (Reports{"GET_RECCNT 6", "edSearch_Name 3420"}));
    EXPECT_TRUE(names().empty());
}

TEST_F(SearchTablesTest, CountAsManyRowsAsSixteenBitsHold)
{
    addRows(32767);
    edSearch_Addr();
    EXPECT_EQ(addresses().size(), 2U);
}

TEST_F(SearchTablesTest, ReportAMissingDatabase)
{
    gDbPath += u".gone";
    edSearch_Name();
    edSearch_Addr();
    EXPECT_EQ(takeReports(), (Reports{"edSearch_Name 3024", "edSearch_Addr 3024"}));
}

}
}
