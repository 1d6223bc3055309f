#include "app/file_names.h"
#include "platform/system/test_hooks.h"
#include "store/db_compress.h"

#include "store/database_files.h"
#include "support/archive_fixture.h"
#include "support/yield_watch.h"

namespace tolvek::test {
namespace {

using Permissions = std::filesystem::perms;

class DbCompressTest : public ArchiveFixture {
protected:
    Text live() const { return gDbPath; }
    Text fresh() const { return sideFile(gDbPath, kNewSuffix); }
    Text previous() const { return sideFile(gDbPath, kBakSuffix); }
    Permissions modeOf(const std::string& name) const
    {
        return std::filesystem::status(file(name)).permissions();
    }
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
    hooks::setFileProbe([](FileOperation operation, const Path&) {
        if (operation == FileOperation::Link)
            throw std::system_error(std::make_error_code(std::errc::operation_not_permitted));
    });
    dbCompress(gDbPath);
    dbCompress(gDbPath);
    hooks::setFileProbe({});
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

TEST_F(DbCompressTest, ABakWithMailBesideADatabaseWithoutAnyIsKeptAside)
{
    store(mail(u"a@b.jp", u"c@d.jp", u"一通目"));
    dbCompress(gDbPath);
    removeDatabase(gDbPath);
    Table_Create();
    dbCompress(gDbPath);
    EXPECT_EQ(rows(u"tblTolvek", gDbPath + u".Kept"), 1);
    EXPECT_EQ(rows(u"tblTolvek", previous()), 0);
    dbCompress(gDbPath);
    EXPECT_EQ(fileNames(folder.path()).size(), 3u) << "kept once";
}

// The state after a backup: the mails are in its file and in .Bak.
class DbCompressAfterBackUpTest : public DbCompressTest {
protected:
    void SetUp() override
    {
        DbCompressTest::SetUp();
        store(mail(u"a@b.jp", u"c@d.jp", u"一通目"));
        store(mail(u"a@b.jp", u"c@d.jp", u"二通目", u"20000216"));
        // The fields that aren't named are Null.
        execute(Statement{u"INSERT INTO tblFriend (tblFriend_Address) VALUES( 'a@b.jp' )"});
        execute(Statement{u"INSERT INTO tblFilter (tblFilter_No) VALUES( 10 )"});
        dbCompress(gDbPath);
        DBEngine::CompactDatabase(gDbPath, joinPath(appPath(), u"Tolvek_20000225.Mdb"));
        execute(Statement{u"DELETE FROM tblTolvek"});
    }
    int kept() { return exists("Tolvek.Mdb.Kept") ? rows(u"tblTolvek", gDbPath + u".Kept") : 0; }
    Path backUp() const { return file("Tolvek_20000225.Mdb"); }
};

TEST_F(DbCompressAfterBackUpTest, ABakWhoseMailsAreInTheBackUpIsntKept)
{
    writeBytes(file("Tolvek_20010101.Mdb"), "another one that can't be read");
    dbCompress(gDbPath);
    EXPECT_EQ(kept(), 0);
    EXPECT_EQ(rows(u"tblTolvek", pathText(backUp())), 2);
}

TEST_F(DbCompressAfterBackUpTest, ABackUpThatLacksAMailOfTheBakIsntEnough)
{
    execute(Statement{u"DELETE FROM tblTolvek WHERE tblTolvek_YMD = '20000216'"},
            pathText(backUp()));
    dbCompress(gDbPath);
    EXPECT_EQ(kept(), 2);
}

TEST_F(DbCompressAfterBackUpTest, ABackUpWithAnotherTextUnderTheKeyOfAMailIsntEnough)
{
    execute(Statement{u"UPDATE tblTolvek SET tblTolvek_Mail1 = 'x'"}, pathText(backUp()));
    dbCompress(gDbPath);
    EXPECT_EQ(kept(), 2);
}

TEST_F(DbCompressAfterBackUpTest, ABackUpThatLacksAFriendOfTheBakIsntEnough)
{
    execute(Statement{u"DELETE FROM tblFriend"}, pathText(backUp()));
    dbCompress(gDbPath);
    EXPECT_EQ(kept(), 2);
    EXPECT_EQ(rows(u"tblFriend", gDbPath + u".Kept"), 1);
}

TEST_F(DbCompressAfterBackUpTest, ABackUpWithAnotherRuleThanTheBakIsntEnough)
{
    execute(Statement{u"UPDATE tblFilter SET tblFilter_Data = 'x'"}, pathText(backUp()));
    dbCompress(gDbPath);
    EXPECT_EQ(kept(), 2);
    EXPECT_EQ(rows(u"tblFilter", gDbPath + u".Kept"), 1);
}

TEST_F(DbCompressAfterBackUpTest, ABackUpThatCantBeReadIsntEnough)
{
    writeBytes(backUp(), readBytes(backUp()).substr(0, 9000));
    dbCompress(gDbPath);
    EXPECT_EQ(kept(), 2);
}

TEST_F(DbCompressAfterBackUpTest, ABackUpThatIsOnlyALinkToTheBakIsntEnough)
{
    removeFile(backUp());
    std::filesystem::create_symlink("Tolvek.Mdb.Bak", backUp());
    dbCompress(gDbPath);
    EXPECT_EQ(kept(), 2);
}

TEST_F(DbCompressAfterBackUpTest, AnEarlierKeptFileWithTheSameMailsIsEnough)
{
    std::filesystem::rename(backUp(), file("Tolvek.Mdb.Kept"));
    dbCompress(gDbPath);
    EXPECT_EQ(kept(), 2);
    EXPECT_FALSE(exists("Tolvek.Mdb.Kept2"));
}

TEST_F(DbCompressTest, AReadOnlyDatabaseStaysAsItIs)
{
    store(Mail{});
    dbCompress(gDbPath);
    const std::string live = readBytes(file("Tolvek.Mdb")), bak = readBytes(file("Tolvek.Mdb.Bak"));
    std::filesystem::permissions(file("Tolvek.Mdb"), Permissions::owner_read);
    const auto time = std::filesystem::last_write_time(file("Tolvek.Mdb"));
    dbCompress(gDbPath);
    EXPECT_EQ(modeOf("Tolvek.Mdb"), Permissions::owner_read);
    EXPECT_EQ(std::filesystem::last_write_time(file("Tolvek.Mdb")), time);
    EXPECT_EQ(readBytes(file("Tolvek.Mdb")), live);
    EXPECT_EQ(readBytes(file("Tolvek.Mdb.Bak")), bak);
    EXPECT_EQ(fileNames(folder.path()).size(), 2u);
}

TEST_F(DbCompressTest, ALinkedDatabaseIsCompactedWhereItLies)
{
    store(Mail{});
    const TempFolder elsewhere;
    const Path target = elsewhere / "Archive.Mdb";
    std::filesystem::rename(file("Tolvek.Mdb"), target);
    std::filesystem::create_symlink(target, file("Tolvek.Mdb"));
    dbCompress(gDbPath);
    EXPECT_EQ(std::filesystem::read_symlink(file("Tolvek.Mdb")), target);
    EXPECT_EQ(rows(u"tblTolvek", pathText(target)), 1);
    EXPECT_EQ(rows(u"tblTolvek", pathText(target) + u".Bak"), 1);
    EXPECT_FALSE(std::filesystem::equivalent(target, elsewhere / "Archive.Mdb.Bak"));
    EXPECT_EQ(fileNames(elsewhere.path()).size(), 2u);
    EXPECT_EQ(fileNames(folder.path()).size(), 1u);
}

TEST_F(DbCompressTest, TheModeOfTheDatabaseIsKeptAndANewOneIsItsOwnersAlone)
{
    constexpr auto owner = Permissions::owner_read | Permissions::owner_write;
    EXPECT_EQ(modeOf("Tolvek.Mdb"), owner);
    for (const auto mode : {owner, owner | Permissions::group_read}) {
        std::filesystem::permissions(file("Tolvek.Mdb"), mode);
        dbCompress(gDbPath);
        EXPECT_EQ(modeOf("Tolvek.Mdb"), mode);
        EXPECT_EQ(modeOf("Tolvek.Mdb.Bak"), mode);
    }
    DBEngine::CompactDatabase(gDbPath, gDbPath + u".Copy");
    EXPECT_EQ(modeOf("Tolvek.Mdb.Copy"), owner);
}

// A foreign file under one of our names is a different file, wherever it leads.
TEST_F(DbCompressTest, ALinkUnderTheNameOfASideFileIsntFollowed)
{
    store(Mail{});
    const TempFolder elsewhere;
    writeBytes(elsewhere / "precious", "precious");
    std::filesystem::create_symlink(elsewhere / "precious", file("Tolvek.Mdb.New"));
    std::filesystem::create_symlink(elsewhere / "none", file("Tolvek.Mdb.New.Compact"));
    dbCompress(gDbPath);
    EXPECT_EQ(readBytes(elsewhere / "precious"), "precious");
    EXPECT_FALSE(fileExists(elsewhere / "none"));
    EXPECT_EQ(rows(u"tblTolvek"), 1);
    EXPECT_FALSE(std::filesystem::is_symlink(file("Tolvek.Mdb")));
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

// The close box may end the program at any yield.
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
