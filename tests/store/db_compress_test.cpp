#include "store/db_compress.h"

#include "store/database_files.h"
#include "support/archive_fixture.h"
#include "support/yield_watch.h"

namespace tolvek::test {
namespace {

class DbCompressTest : public ArchiveFixture {
protected:
    Text live() const { return gDbPath; }
    Text fresh() const { return gDbPath + u".New"; }
    Text previous() const { return gDbPath + u".Bak"; }
};

TEST_F(DbCompressTest, AFirstStartGivesADatabaseAndItsBak)
{
    dbCompress(gDbPath);
    EXPECT_EQ(fileNames(folder.path()).size(), 2u);
    EXPECT_EQ(rows(u"tblTolvek", live()), 0);
    EXPECT_EQ(rows(u"tblTolvek", previous()), 0);
}

TEST_F(DbCompressTest, TheBakIsTheDatabaseAsItStoodBefore)
{
    store(mail(u"a@b.jp", u"c@d.jp"));
    dbCompress(gDbPath);
    store(mail(u"e@f.jp", u"c@d.jp"));
    EXPECT_EQ(rows(u"tblTolvek", live()), 2);
    EXPECT_EQ(rows(u"tblTolvek", previous()), 1);
    dbCompress(gDbPath);
    EXPECT_EQ(rows(u"tblTolvek", live()), 2);
    EXPECT_EQ(rows(u"tblTolvek", previous()), 2);
    EXPECT_FALSE(exists("Tolvek.Mdb.New"));
}

TEST_F(DbCompressTest, TheTwoGenerationsAreTwoFiles)
{
    dbCompress(gDbPath);
    EXPECT_EQ(std::filesystem::hard_link_count(file("Tolvek.Mdb")), 1u);
    EXPECT_EQ(std::filesystem::hard_link_count(file("Tolvek.Mdb.Bak")), 1u);
}

TEST_F(DbCompressTest, ALeftoverOfAPowerCutIsDeletedFirst)
{
    store(Mail{});
    writeBytes(file("Tolvek.Mdb.New"), "half a file");
    dbCompress(gDbPath);
    EXPECT_EQ(rows(u"tblTolvek"), 1);
    EXPECT_FALSE(exists("Tolvek.Mdb.New"));
}

TEST_F(DbCompressTest, WithoutSecondNamesPlainRenamesGiveTheSame)
{
    store(Mail{});
    setFileProbe([](FileOperation operation, const Path&) {
        if (operation == FileOperation::Link)
            throw std::system_error(std::make_error_code(std::errc::operation_not_permitted));
    });
    dbCompress(gDbPath);
    dbCompress(gDbPath);
    setFileProbe({});
    EXPECT_EQ(rows(u"tblTolvek", live()), 1);
    EXPECT_EQ(rows(u"tblTolvek", previous()), 1);
    EXPECT_EQ(fileNames(folder.path()).size(), 2u);
}

TEST_F(DbCompressTest, AnyOtherErrorIsReportedAndEndsTheRoutine)
{
    removeDatabase(gDbPath);
    writeBytes(file("Tolvek.Mdb.Bak"), "stays");
    boxes.expect(u"エラー番号： 3024\r\n（" + errorText(3024, gDbPath) + u"）", MsgAnswer::Ok,
                 u"エラーメッセージ (dbCompress)");
    dbCompress(gDbPath);
    EXPECT_EQ(readBytes(file("Tolvek.Mdb.Bak")), "stays");
}

TEST_F(DbCompressTest, AJournalGoesWithItsDatabase)
{
    writeBytes(file("Tolvek.Mdb.Bak"), "old generation");
    writeBytes(file("Tolvek.Mdb.Bak-journal"), "of the old generation");
    store(Mail{});
    dbCompress(gDbPath);
    EXPECT_FALSE(exists("Tolvek.Mdb.Bak-journal"));
    EXPECT_EQ(rows(u"tblTolvek", previous()), 1);
}

// The close box may end the program at any of them.
TEST_F(DbCompressTest, EachStepYieldsAndAWholeDatabaseHasTheName)
{
    store(Mail{});
    for (int run = 0; run < 2; ++run) { // without a .Bak, and with one
        const YieldWatch yields([&] { EXPECT_EQ(rows(u"tblTolvek", live()), 1); });
        dbCompress(gDbPath);
        EXPECT_EQ(yields.count(), 5);
    }
}

}
}
