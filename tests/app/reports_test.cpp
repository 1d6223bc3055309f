#include "app/reports.h"
#include "app/sleep_ex.h"
#include "support/archive_fixture.h"
#include "support/yield_watch.h"

#include <chrono>

namespace tolvek::test {
namespace {

class ReportsTest : public ArchiveFixture {
protected:
    static Recordset addresses()
    {
        gDb = DBEngine::OpenDatabase(gDbPath);
        return gDb.OpenRecordset(Statement{u"SELECT * FROM tblSearch_Addresses"});
    }
    static void givenAddresses(int count)
    {
        Database database = DBEngine::OpenDatabase(gDbPath);
        inTransaction([&] {
            for (int n = 0; n < count; ++n) {
                Statement sql{u"INSERT INTO tblSearch_Addresses ( tblSearch_Addr_Data ) VALUES( '"};
                sql << decimal(n) << u"' )";
                database.Execute(sql, dbFailOnError);
            }
        });
        database.Close();
    }
};

TEST_F(ReportsTest, AnEmptyDescriptionLeavesNothingBetweenTheBrackets)
{
    boxes.expect(u"エラー番号： 1000\r（）", MsgAnswer::Ok, u"エラーメッセージ (Main)");
    ErrReport(u"Main", RuntimeError(1000, u"", nullptr));
    EXPECT_EQ(boxes.shown().front().icon, MsgIcon::Critical);
}

TEST_F(ReportsTest, ADatabaseReportClosesTheDatabase)
{
    gDb = DBEngine::OpenDatabase(gDbPath);
    boxes.expect(u"エラー番号： 3022\r\n（" + errorText(3022) + u"）", MsgAnswer::Ok,
                 u"エラーメッセージ (TolvekDB_Insert)");
    ErrReportDb(u"TolvekDB_Insert", RuntimeError(3022));
    EXPECT_FALSE(gDb.isOpen());
    EXPECT_EQ(boxes.shown().front().icon, MsgIcon::Critical);
}

TEST_F(ReportsTest, ALockedDatabaseEndsTheProgram)
{
    boxes.expect(u"エラー番号： 3356\r\n（" + errorText(3356) +
                 u"）\r\n\r\nMail File がロックされています。");
    EXPECT_THROW(ErrReportDb(u"dspMail", RuntimeError(3356)), ProgramEnd);
}

TEST_F(ReportsTest, AMissingComponentEndsTheProgram)
{
    boxes.expect(u"エラー番号： 429\r\n（" + errorText(429) +
                 u"）\r\n\r\nDLL の バージョンが違うか，インストールされていません。"
                 u"\r\nフルインストールを実行して下さい。");
    EXPECT_THROW(ErrReportDb(u"dspMail", RuntimeError(429)), ProgramEnd);
}

TEST_F(ReportsTest, TheEndClosesDatabaseAndFiles)
{
    const Int16 number = freeFile();
    openForOutput(joinPath(appPath(), u"Some.Txt"), number);
    gDb = DBEngine::OpenDatabase(gDbPath);
    EXPECT_THROW(endProgram(), ProgramEnd);
    EXPECT_FALSE(gDb.isOpen());
    EXPECT_EQ(freeFile(), number);
}

TEST_F(ReportsTest, CountingAnEmptyResultGivesZeroAndNoMove)
{
    Recordset nothing = addresses();
    Int16 count = 7;
    GET_RECCNT(nothing, count);
    EXPECT_EQ(count, 0);
    EXPECT_TRUE(nothing.Eof());
}

TEST_F(ReportsTest, CountingLeavesTheFirstRowCurrent)
{
    givenAddresses(3);
    Recordset found = addresses();
    Int16 count = 0;
    GET_RECCNT(found, count);
    EXPECT_EQ(count, 3);
    EXPECT_EQ(found.field(0).text(), u"0");
}

TEST_F(ReportsTest, TheLargestCountThatABasicIntegerHolds)
{
    givenAddresses(32767);
    Recordset found = addresses();
    Int16 count = 0;
    GET_RECCNT(found, count);
    EXPECT_EQ(count, 32767);
}

TEST_F(ReportsTest, OneRowMoreIsAnOverflowOfTheCounting)
{
    givenAddresses(32768);
    Recordset found = addresses();
    Int16 count = 0;
    boxes.expect(u"エラー番号： 6\r\n（" + errorText(6) + u"）", MsgAnswer::Ok,
                 u"エラーメッセージ (GET_RECCNT)");
    GET_RECCNT(found, count);
    EXPECT_EQ(count, 32767);
    EXPECT_FALSE(gDb.isOpen());
}

TEST_F(ReportsTest, CountingADeadRecordsetIsReported)
{
    Recordset found = addresses();
    gDb.Close();
    Int16 count = 5;
    boxes.expect(u"エラー番号： 3420\r\n（" + errorText(3420) + u"）");
    GET_RECCNT(found, count);
    EXPECT_EQ(count, 0);
}

// User input is handled row by row: no row, no move, no yield.
TEST_F(ReportsTest, CountingYieldsAtEachRow)
{
    for (const int count : {0, 1, 3}) {
        execute(Statement{u"DELETE FROM tblSearch_Addresses"});
        givenAddresses(count);
        Recordset found = addresses();
        Int16 counted = 0;
        EXPECT_EQ(yieldsOf([&] { GET_RECCNT(found, counted); }), count);
        EXPECT_EQ(counted, count);
        gDb.Close();
    }
}

TEST_F(ReportsTest, AWaitLastsItsMillisecondsAndYieldsAfterEach)
{
    const auto begun = std::chrono::steady_clock::now();
    EXPECT_EQ(yieldsOf([] { SleepEX_Rtn(7); }), 7);
    EXPECT_GE(std::chrono::steady_clock::now() - begun, std::chrono::milliseconds(7));
    for (const int count : {0, -5})
        EXPECT_EQ(yieldsOf([&] { SleepEX_Rtn(count); }), 0);
}

// The failing wait ends early; the statements after it still run.
TEST_F(ReportsTest, AFailureWithinAWaitIsReportedAndTheWaitGoesOn)
{
    boxes.expect(u"エラー番号： 5\r\n（" + errorText(5) + u"）", MsgAnswer::Ok,
                 u"エラーメッセージ (SleepEX_Rtn)");
    bool failed = false;
    const YieldWatch yields([&] {
        if (!std::exchange(failed, true)) throw RuntimeError(5);
    });
    SleepEX_Rtn(3);
    EXPECT_EQ(yields.count(), 3);
}

}
}
