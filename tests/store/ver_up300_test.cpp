// The upgrade of an older archive: what it copies, what it shows, and when it is undone.
#include "app/file_names.h"
#include "platform/runtime/test_hooks.h"
#include "platform/system/test_hooks.h"
#include "store/archive_tables.h"
#include "support/upgrade_fixture.h"

namespace tolvek::test {
namespace {

const Text kTitle = u"エラーメッセージ (Ver300_DBUpGrade)";

class VerUp300Test : public UpgradeFixture {
protected:
    void SetUp() override
    {
        UpgradeFixture::SetUp();
        givenOldArchive();
        givenVersion("210");
    }
    void upgrade()
    {
        boxes.expect(kUpgradeBegins, MsgAnswer::Ok, u"Tolvek");
        runUpgrade();
    }
    void upgradeFails(int number, const Text& description)
    {
        boxes.expect(kUpgradeBegins);
        boxes.expect(u"エラー番号： " + decimal(number) + u"\r（" + description + u"）",
                     MsgAnswer::Ok, kTitle);
        boxes.expect(kUpgradeFailed, MsgAnswer::Ok, u"Tolvek");
        EXPECT_THROW(runUpgrade(), ProgramEnd);
        EXPECT_EQ(boxes.shown().rbegin()[1].icon, MsgIcon::Critical);
    }
    // Answers Yes and OK; returns the boxes that were shown.
    std::vector<MsgBoxRequest> upgradeThatEnds()
    {
        std::vector<MsgBoxRequest> reported;
        hooks::setMsgBox([&](const MsgBoxRequest& box) {
            reported.push_back(box);
            return box.buttons == MsgButtons::YesNo ? MsgAnswer::Yes : MsgAnswer::Ok;
        });
        EXPECT_THROW(runUpgrade(), ProgramEnd);
        return reported;
    }
    // Set field by field, since no statement accepts an apostrophe.
    static void storeOldSubject(const Text& subject)
    {
        const Text values[] = {u"20000217", u"101112", u"0",      u"花子",
                               u"a@b.jp",   u"太郎",   u"c@d.jp", subject};
        Database opened = DBEngine::OpenDatabase(gDbPath);
        Recordset table = opened.OpenRecordset(Statement{u"SELECT * FROM tblTolvek"});
        table.AddNew();
        for (int i = 0; i < 8; ++i)
            table.setField(i, values[i]);
        table.Update();
        opened.Close();
    }
    void expectOldInPlace(const Archive& before)
    {
        EXPECT_FALSE(isUpgraded(gDbPath));
        EXPECT_EQ(oldFieldsOf(gDbPath), before);
        EXPECT_FALSE(exists("Tolvek.Mdb.V300"));
        EXPECT_FALSE(exists("Tolvek.Mdb.Upgrade"));
        EXPECT_EQ(version(), u"210");
    }
};

TEST_F(VerUp300Test, EveryRowOfEveryTableIsCarriedOver)
{
    givenOldRows();
    const Archive before = oldFieldsOf(gDbPath);
    upgrade();
    EXPECT_TRUE(isUpgraded(gDbPath));
    EXPECT_EQ(oldFieldsOf(gDbPath), before);
    for (const Rows& table : before)
        EXPECT_FALSE(table.empty());
}

TEST_F(VerUp300Test, TheNewFieldsAre0AndTheConstantFalse)
{
    givenOldRows();
    upgrade();
    EXPECT_EQ(column(u"SELECT tblTolvek_SubKey FROM tblTolvek"), (std::vector<Text>{u"0", u"0"}));
    EXPECT_EQ(column(u"SELECT tblTolvek_Include FROM tblTolvek"), (std::vector<Text>{u"0", u"0"}));
    EXPECT_EQ(value(u"SELECT tblFilterDt_SubKey FROM tblFilterData"), u"0");
}

TEST_F(VerUp300Test, TheOldArchiveStaysAndTheRunningVersionIsWritten)
{
    givenOldRows();
    const Archive before = oldFieldsOf(gDbPath);
    upgrade();
    EXPECT_EQ(oldFieldsOf(old()), before);
    EXPECT_FALSE(isUpgraded(old()));
    EXPECT_EQ(version(), u"331");
    EXPECT_EQ(gVer, 331);
    EXPECT_FALSE(exists("Tolvek.Mdb.Upgrade"));
    EXPECT_TRUE(exists("Tolvek.Mdb.Bak")) << "compacted before";
}

TEST_F(VerUp300Test, TheOldArchiveOfAnEarlierUpgradeIsDeleted)
{
    writeBytes(file("Tolvek.Mdb.V300"), "earlier");
    storeOld(Mail{});
    upgrade();
    EXPECT_EQ(rows(u"tblTolvek", old()), 1);
}

TEST_F(VerUp300Test, TheProgressIsToldForEachRowInTheOrderOfTheWork)
{
    givenOldRows();
    storeOld(mail(u"a@b.jp", u"c@d.jp", u"三通目"));
    upgrade();
    const auto line = [](TextView what, TextView percent) {
        return Text(what) + u"の整合性チェックが \r\n" + Text(percent) + u" % 終了しました。";
    };
    EXPECT_EQ(lines, (std::vector<Text>{
                         line(u"フィルター", u"100.00"), line(u"フィルターデータ", u"100.00"),
                         line(u"お友達帳", u"100.00"), line(u"アドレス一覧", u"100.00"),
                         line(u"送受信者名", u"100.00"), line(u"メールデータ", u"33.33"),
                         line(u"メールデータ", u"66.67"), line(u"メールデータ", u"100.00")}));
}

TEST_F(VerUp300Test, AnEmptyTableHasNoProgressLineAndTheNextFollows)
{
    addFilter(1, 0, 0, u"題", u"言葉");
    storeOld(Mail{});
    upgrade();
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].substr(0, 5), u"フィルター");
    EXPECT_EQ(lines[1].substr(0, 6), u"メールデータ");
}

TEST_F(VerUp300Test, AnApostropheEndsItAndTheOldArchiveIsBackForTheNextTry)
{
    givenOldRows();
    storeOldSubject(u"Don't");
    const Archive before = oldFieldsOf(gDbPath);
    for (int start = 0; start < 2; ++start) {
        const std::vector<MsgBoxRequest> reported = upgradeThatEnds();
        ASSERT_EQ(reported.size(), 3u);
        EXPECT_EQ(reported[1].text.substr(0, 12), u"エラー番号： 3075\r");
        EXPECT_EQ(reported[1].title, kTitle);
        EXPECT_EQ(reported[2].text, kUpgradeFailed);
        expectOldInPlace(before);
    }
    EXPECT_EQ(lines.size(), 2 * 8u) << "as far as the third mail, twice";
}

TEST_F(VerUp300Test, TwoMailsThatAgreeInEverythingButTheSubjectEndIt)
{
    removeDatabase(gDbPath);
    Database made = DBEngine::Workspaces(0).CreateDatabase(gDbPath, u"");
    for (TableSpec spec : allTableSpecs()) {
        if (spec.name == u"tblTolvek") spec.key = {u"tblTolvek_Subject"};
        made.TableDefs().Append(oldDefinition(spec));
    }
    made.Close();
    storeOld(mail(u"a@b.jp", u"c@d.jp", u"ふたごの兄"));
    storeOld(mail(u"a@b.jp", u"c@d.jp", u"ふたごの弟"));
    const Archive before = oldFieldsOf(gDbPath);
    upgradeFails(3022, RuntimeError(3022).description());
    expectOldInPlace(before);
}

TEST_F(VerUp300Test, AnOldArchiveThatCantBeOpenedGoesBackFirst)
{
    storeOld(Mail{});
    hooks::setFileProbe([](FileOperation operation, const Path& path) {
        if (operation == FileOperation::Open && path.extension() == toUtf8(kV300Suffix))
            throw std::system_error(std::make_error_code(std::errc::permission_denied));
    });
    const std::vector<MsgBoxRequest> reported = upgradeThatEnds();
    hooks::setFileProbe({});
    ASSERT_EQ(reported.size(), 3u);
    EXPECT_EQ(reported[1].title, kTitle);
    EXPECT_EQ(rows(u"tblTolvek"), 1);
    EXPECT_FALSE(exists("Tolvek.Mdb.Upgrade"));
}

// The count stops at 32767; a failure after that undoes the upgrade.
TEST_F(VerUp300Test, MoreRowsThanTheCountHoldsEndItWithNothingLost)
{
    Database opened = DBEngine::OpenDatabase(gDbPath);
    inTransaction([&] {
        for (int i = 0; i < 32768; ++i) {
            Statement sql{u"INSERT INTO tblSearch_Name ( tblSearch_Name_Data ) VALUES( '"};
            sql << decimal(i) << u"' )";
            opened.Execute(sql, dbFailOnError);
        }
    });
    opened.Close();
    const std::vector<MsgBoxRequest> reported = upgradeThatEnds();
    ASSERT_EQ(reported.size(), 4u);
    EXPECT_EQ(reported[1].title, u"エラーメッセージ (GET_RECCNT)");
    EXPECT_EQ(reported[2].title, kTitle);
    EXPECT_EQ(reported[3].text, kUpgradeFailed);
    EXPECT_EQ(rows(u"tblSearch_Name"), 32768);
    EXPECT_FALSE(isUpgraded(gDbPath));
}

TEST_F(VerUp300Test, WithoutADatabaseANewOneIsMadeAndTheVersionStays)
{
    removeDatabase(gDbPath);
    writeBytes(file("Tolvek.Mdb.V300"), "earlier");
    upgrade();
    EXPECT_TRUE(isUpgraded(gDbPath));
    EXPECT_EQ(rows(u"tblTolvek"), 0);
    EXPECT_EQ(version(), u"210");
    EXPECT_EQ(readBytes(file("Tolvek.Mdb.V300")), "earlier");
    EXPECT_FALSE(exists("Tolvek.Mdb.Bak"));
}

TEST_F(VerUp300Test, AVersionThatCantBeWrittenEndsTheProgramWithTheArchiveUpgraded)
{
    givenOldRows();
    const Archive before = oldFieldsOf(gDbPath);
    std::filesystem::permissions(file("TOLVEK.ini"), std::filesystem::perms::owner_read);
    const std::vector<MsgBoxRequest> reported = upgradeThatEnds();
    ASSERT_EQ(reported.size(), 2u);
    EXPECT_EQ(reported[1].text, gIniPath + u"　書き込みエラー");
    settleCutOffUpgrade(gDbPath, true);
    EXPECT_TRUE(isUpgraded(gDbPath));
    EXPECT_EQ(oldFieldsOf(gDbPath), before);
    EXPECT_EQ(oldFieldsOf(old()), before);
    EXPECT_FALSE(exists("Tolvek.Mdb.Upgrade"));
    EXPECT_FALSE(isOldArchive(gDbPath)) << "nothing is left for the next start";
}

// A start that went on would write the version and never upgrade again.
TEST_F(VerUp300Test, AnEarlierOldArchiveThatCantBeDeletedIsToldAndNothingMoves)
{
    storeOld(Mail{});
    std::filesystem::create_directory(file("Tolvek.Mdb.V300"));
    const std::vector<MsgBoxRequest> reported = upgradeThatEnds();
    ASSERT_EQ(reported.size(), 2u);
    EXPECT_EQ(reported[1].title, u"エラーメッセージ (VerUp300)");
    EXPECT_EQ(rows(u"tblTolvek"), 1);
    EXPECT_FALSE(exists("Tolvek.Mdb.Upgrade"));
    EXPECT_EQ(version(), u"210");
}

TEST_F(VerUp300Test, ADamagedArchiveThatTheUserGivesUpLeavesNoMarkBehind)
{
    writeBytes(file("Tolvek.Mdb"), std::string(5000, 'x'));
    std::vector<Text> titles;
    hooks::setMsgBox([&](const MsgBoxRequest& box) {
        titles.push_back(box.title);
        return box.buttons == MsgButtons::YesNo ? MsgAnswer::Yes : MsgAnswer::Ok;
    });
    runUpgrade();
    EXPECT_EQ(titles, (std::vector<Text>{u"Tolvek", u"Tolvek"}));
    EXPECT_EQ(version(), u"210");
    EXPECT_FALSE(exists("Tolvek.Mdb.Upgrade"));
    EXPECT_TRUE(exists("Tolvek.Mdb.Damaged"));
    EXPECT_FALSE(databaseExists(gDbPath)) << "the start makes one";
}

class VerUp300SettleTest : public VerUp300Test {
protected:
    // The old archive is renamed, and an incomplete new one is in its place.
    void givenCutOff()
    {
        storeOld(Mail{});
        renameDatabase(gDbPath, old());
        Table_Create();
        writeBytes(file("Tolvek.Mdb.Upgrade"), "");
    }
};

TEST_F(VerUp300SettleTest, WithTheMarkTheOldArchiveComesBackOverTheHalfNewOne)
{
    givenCutOff();
    settleCutOffUpgrade(gDbPath, true);
    EXPECT_FALSE(isUpgraded(gDbPath));
    EXPECT_EQ(rows(u"tblTolvek"), 1);
    EXPECT_FALSE(exists("Tolvek.Mdb.V300"));
    EXPECT_FALSE(exists("Tolvek.Mdb.Upgrade"));
}

// There may be an old archive with the settings of a newer version.
TEST_F(VerUp300SettleTest, WithTheMarkItComesBackWhateverTheVersionSays)
{
    givenCutOff();
    settleCutOffUpgrade(gDbPath, false);
    EXPECT_FALSE(isUpgraded(gDbPath));
    EXPECT_EQ(rows(u"tblTolvek"), 1);
    EXPECT_FALSE(exists("Tolvek.Mdb.Upgrade"));
}

TEST_F(VerUp300SettleTest, AMarkWithoutAnOldArchiveGoes)
{
    storeOld(Mail{});
    writeBytes(file("Tolvek.Mdb.Upgrade"), "");
    settleCutOffUpgrade(gDbPath, true);
    EXPECT_EQ(rows(u"tblTolvek"), 1);
    EXPECT_FALSE(exists("Tolvek.Mdb.Upgrade"));
}

TEST_F(VerUp300SettleTest, WithoutADatabaseTheOldArchiveComesBackWhileTheVersionIsAnOldOne)
{
    storeOld(Mail{});
    renameDatabase(gDbPath, old());
    settleCutOffUpgrade(gDbPath, false);
    EXPECT_FALSE(databaseExists(gDbPath));
    settleCutOffUpgrade(gDbPath, true);
    EXPECT_EQ(rows(u"tblTolvek"), 1);
}

TEST_F(VerUp300SettleTest, WithoutAMarkAnOldArchiveBesideADatabaseIsThatOfAnEarlierUpgrade)
{
    storeOld(Mail{});
    writeBytes(file("Tolvek.Mdb.V300"), "earlier");
    settleCutOffUpgrade(gDbPath, true);
    EXPECT_EQ(rows(u"tblTolvek"), 1);
    EXPECT_EQ(readBytes(file("Tolvek.Mdb.V300")), "earlier");
}

}
}
