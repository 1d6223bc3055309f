// Starts of the program with an archive of an older version.
#include "dialogs/frm_splash.h"
#include "platform/runtime/test_hooks.h"
#include "platform/system/test_hooks.h"
#include "shell/frm_tolvek_events.h"
#include "shell/tolvek_main.h"
#include "support/upgrade_fixture.h"

namespace tolvek::test {
namespace {

class UpgradeStartTest : public UpgradeFixture {
protected:
    void SetUp() override
    {
        UpgradeFixture::SetUp();
        App.PrevInstance = 0;
        givenOldArchive();
        storeOld(mail(u"hanako@example.jp", u"taro@example.jp", u"一通目"));
        storeKnown(u"hanako@example.jp", u"花子");
    }
    void TearDown() override
    {
        splash.Unload();
        gUnloading = -1; // the window closes without the exit's steps
        window.Unload();
        gUnloading = 0;
        UpgradeFixture::TearDown();
    }
    void givenSettings(const std::string& Ver)
    {
        writeBytes(file("TOLVEK.ini"), "[Tolvek Environment]\r\n" + Ver +
                                           "[PostPet Mail Option]\r\n"
                                           "My Mail Addr=taro@example.jp\r\n");
    }
    // Answers No and OK; returns the titles and texts of the boxes.
    std::vector<Text> start()
    {
        std::vector<Text> reported;
        hooks::setMsgBox([&](const MsgBoxRequest& box) {
            reported.push_back(box.title + u": " + box.text);
            return box.buttons == MsgButtons::YesNo ? MsgAnswer::No : MsgAnswer::Ok;
        });
        try {
            Main(splash, window);
        } catch (const ProgramEnd&) {
            reported.emplace_back(u"end");
        }
        return reported;
    }
    std::vector<Text> known()
    {
        return column(u"SELECT tblSearch_Addr_Data FROM tblSearch_Addresses");
    }

    frmSplash splash;
    frmTolvekEvents window;
};

class UpgradeStartOldVersionTest : public UpgradeStartTest,
                                   public ::testing::WithParamInterface<const char*> {};

TEST_P(UpgradeStartOldVersionTest, Upgrades)
{
    givenSettings(GetParam());
    const std::vector<Text> reported = start();
    ASSERT_FALSE(reported.empty());
    EXPECT_NE(std::find(reported.begin(), reported.end(), u"Tolvek: " + Text(kUpgradeBegins)),
              reported.end());
    EXPECT_TRUE(isUpgraded(gDbPath));
    EXPECT_EQ(rows(u"tblTolvek"), 1);
    EXPECT_EQ(version(), u"331");
    EXPECT_TRUE(exists("Tolvek.Mdb.V300"));
    EXPECT_TRUE(window.Visible());
}

// An empty value is first reported as no number; the upgrade runs all the same.
INSTANTIATE_TEST_SUITE_P(OfTheSettings, UpgradeStartOldVersionTest,
                         ::testing::Values("Ver=200\r\n", "Ver=210\r\n", "Ver=1000\r\n",
                                           "Ver=0\r\n", "Ver=\r\n"));

// Also without a settings file: the tables decide.
INSTANTIATE_TEST_SUITE_P(OfNewerSettings, UpgradeStartOldVersionTest,
                         ::testing::Values("Ver=211\r\n", "Ver=331\r\n", "Ver=999\r\n",
                                           "Ver=99\r\n", ""));

class UpgradeStartCurrentTest : public UpgradeStartTest,
                                public ::testing::WithParamInterface<const char*> {};

TEST_P(UpgradeStartCurrentTest, IsntUpgradedWhateverTheVersionSays)
{
    removeDatabase(gDbPath);
    Table_Create();
    store(Mail{});
    givenSettings(GetParam());
    const std::vector<Text> reported = start();
    EXPECT_EQ(std::find(reported.begin(), reported.end(), u"Tolvek: " + Text(kUpgradeBegins)),
              reported.end());
    EXPECT_FALSE(exists("Tolvek.Mdb.V300"));
    EXPECT_EQ(rows(u"tblTolvek"), 1);
    EXPECT_TRUE(window.Visible());
}

INSTANTIATE_TEST_SUITE_P(OfTheSettings, UpgradeStartCurrentTest,
                         ::testing::Values("Ver=331\r\n", "Ver=210\r\n", "Ver=1000\r\n", "Ver=\r\n",
                                           ""));

TEST_F(UpgradeStartTest, AnOldBakThatReplacedADamagedArchiveIsUpgraded)
{
    givenSettings("Ver=331\r\n");
    renameDatabase(gDbPath, gDbPath + u".Bak");
    writeBytes(file("Tolvek.Mdb"), "ruined");
    hooks::setMsgBox([](const MsgBoxRequest& box) {
        return box.buttons == MsgButtons::YesNo ? MsgAnswer::Yes : MsgAnswer::Ok;
    });
    Main(splash, window);
    EXPECT_TRUE(isUpgraded(gDbPath));
    EXPECT_EQ(rows(u"tblTolvek"), 1);
}

TEST_F(UpgradeStartTest, TheSplashShowsTheProgressAndTheMainWindowTheMails)
{
    givenSettings("Ver=210\r\n");
    Text seen;
    hooks::setFileProbe([&](FileOperation, const Path&) {
        if (splash.Loaded() && !splash.lblWarning->Caption().empty())
            seen = splash.lblWarning->Caption();
    });
    EXPECT_EQ(start(), std::vector<Text>{u"Tolvek: " + Text(kUpgradeBegins)});
    hooks::setFileProbe({});
    EXPECT_EQ(seen, u"メールデータの整合性チェックが \r\n100.00 % 終了しました。");
    EXPECT_FALSE(splash.Loaded());
    EXPECT_EQ(window.lstNameOrAddr->ListCount(), 1);
    EXPECT_EQ(known(), std::vector<Text>{u"hanako@example.jp"});
}

TEST_F(UpgradeStartTest, WithoutADatabaseANewOneIsMadeAndABakWithMailIsKeptAside)
{
    givenSettings("Ver=210\r\n");
    renameDatabase(gDbPath, gDbPath + u".Bak");
    start();
    EXPECT_TRUE(window.Visible());
    EXPECT_EQ(rows(u"tblTolvek"), 0);
    EXPECT_EQ(version(), u"210") << "until the end of the program";
    EXPECT_FALSE(exists("Tolvek.Mdb.V300"));
    EXPECT_EQ(rows(u"tblTolvek", gDbPath + u".Kept"), 1);
}

TEST_F(UpgradeStartTest, ACutOffUpgradeIsTakenUpAgainWithoutAWord)
{
    givenSettings("Ver=210\r\n");
    renameDatabase(gDbPath, old());
    Table_Create();
    writeBytes(file("Tolvek.Mdb.Upgrade"), "");
    EXPECT_EQ(start(), std::vector<Text>{u"Tolvek: " + Text(kUpgradeBegins)});
    EXPECT_EQ(rows(u"tblTolvek"), 1);
    EXPECT_EQ(rows(u"tblTolvek", old()), 1);
    EXPECT_FALSE(exists("Tolvek.Mdb.Upgrade"));
}

// A compacted copy not yet put in place is newer than any .V300.
TEST_F(UpgradeStartTest, AWholeNewComesBeforeTheOldArchiveOfAnEarlierUpgrade)
{
    givenSettings("Ver=210\r\n");
    storeOld(mail(u"hanako@example.jp", u"taro@example.jp", u"二通目", u"20000216"));
    renameDatabase(gDbPath, gDbPath + u".New");
    givenOldArchive();
    renameDatabase(gDbPath, old());
    start();
    EXPECT_EQ(rows(u"tblTolvek"), 2);
}

// Otherwise the upgrade would delete the only complete archive.
TEST_F(UpgradeStartTest, AnOldArchiveThatCantBePutBackEndsTheStart)
{
    givenSettings("Ver=210\r\n");
    renameDatabase(gDbPath, old());
    Table_Create();
    writeBytes(file("Tolvek.Mdb.Upgrade"), "");
    hooks::setFileProbe([](FileOperation operation, const Path& path) {
        if (operation == FileOperation::Replace && path.filename() == "Tolvek.Mdb")
            throw std::system_error(std::make_error_code(std::errc::io_error));
    });
    const std::vector<Text> reported = start();
    hooks::setFileProbe({});
    ASSERT_EQ(reported.size(), 2u);
    EXPECT_EQ(reported[0].find(u"エラーメッセージ (Main)"), 0u);
    EXPECT_EQ(reported[1], u"end");
    EXPECT_EQ(rows(u"tblTolvek", old()), 1);
    EXPECT_TRUE(exists("Tolvek.Mdb.Upgrade"));
}

}
}
