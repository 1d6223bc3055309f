#include "app/file_names.h"
#include "platform/runtime/test_hooks.h"
#include "platform/system/test_hooks.h"
#include "shell/tolvek_main.h"

#include "dialogs/frm_splash.h"
#include "platform/forms/events.h"
#include "platform/runtime/profile.h"
#include "shell/frm_tolvek_events.h"
#include "store/db_start.h"
#include "store/search_tables.h"
#include "support/archive_fixture.h"
#include "support/modal_script.h"

#include <map>

namespace tolvek::test {
namespace {

const TextView kFirstStart = u"あなたのＰＣの環境を設定してください。";

const TextView kRepair = u"DBの読み込み中にエラーが発生しました。\r\n"
                         u"   BackUpファイルから修復しますか？";
const TextView kAnew = u"DBの読み込み中にエラーが発生しました。\r\n"
                       u"   新しい DB を作りますか？";

// A folder that holds only what a test puts there.
class TolvekMainTest : public ArchiveFixture {
protected:
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        removeFile(file("Tolvek.Mdb"));
        gDbPath.clear();
        gHelpPath.clear();
        App.PrevInstance = 0;
    }
    void TearDown() override
    {
        App.PrevInstance = 0;
        splash.Unload();
        gUnloading = -1; // the window closes without the exit's steps
        window.Unload();
        gUnloading = 0;
        ArchiveFixture::TearDown();
    }

    void givenSettings(const std::string& Ver)
    {
        writeBytes(file("TOLVEK.ini"), "[Tolvek Environment]\r\nVer=" + Ver +
                                           "\r\n[PostPet Mail Option]\r\n"
                                           "My Mail Addr=taro@example.jp\r\n");
    }
    void givenOnlyABakWithMail()
    {
        givenSettings("331");
        gDbPath = joinPath(appPath(), u"Tolvek.Mdb");
        Table_Create();
        store(mail(u"hanako@example.jp", u"taro@example.jp"));
        renameFile(file("Tolvek.Mdb"), file("Tolvek.Mdb.Bak"));
    }
    void start() { Main(splash, window); }
    void expectMainWindow()
    {
        EXPECT_TRUE(window.Visible());
        EXPECT_FALSE(splash.Loaded());
    }
    std::vector<Text> tableNames()
    {
        Database database = DBEngine::OpenDatabase(gDbPath);
        std::vector<Text> names = database.TableDefs().names();
        database.Close();
        std::sort(names.begin(), names.end());
        return names;
    }

    frmSplash splash;
    frmTolvekEvents window;
};

TEST(TolvekMainUpgradeTest, ComparesTextsAndNotNumbers)
{
    const std::map<Text, bool> cases{
        {u"210", true},  {u"200", true},  {u"0", true},     {u"1000", true},
        {u"", true},     {u"209", true},  {u"21", true},    {u"-1", true},
        {u"2", true},    {u"211", false}, {u"300", false},  {u"331", false},
        {u"999", false}, {u"22", false},  {u"2100", false}, {u"9", false},
    };
    for (const auto& [version, expected] : cases)
        EXPECT_EQ(upgradeNeeded(version), expected) << toUtf8(version);
}

TEST_F(TolvekMainTest, TheVersionIsReadAsTheTextOfANumber)
{
    const std::map<std::string, Text> cases{
        {"331", u"331"}, {"0300", u"300"}, {" 210 ", u"210"}, {"1000", u"1000"}, {"-5", u"-5"}};
    for (const auto& [written, expected] : cases) {
        givenSettings(written);
        EXPECT_EQ(lastVersion(), expected) << written;
    }
}

TEST_F(TolvekMainTest, WithoutASettingsFileOrItsKeyTheVersionIs999)
{
    EXPECT_EQ(lastVersion(), u"999");
    writeBytes(file("TOLVEK.ini"), "[Tolvek Environment]\r\nOther=1\r\n");
    EXPECT_EQ(lastVersion(), u"999");
}

TEST_F(TolvekMainTest, AVersionThatIsNoNumberIsATypeMismatch)
{
    for (const char* written : {"", "abc"}) {
        givenSettings(written);
        try {
            lastVersion();
            ADD_FAILURE() << written;
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.number(), 13);
        }
    }
}

// If it were read earlier, there would be no file to read from.
TEST_F(TolvekMainTest, TheVersionIsReadFromTheFileThatTheSplashHasFound)
{
    gIniPath.clear();
    givenSettings("200");
    boxes.expectAndLook(u"Tolvekのバージョンが上がっています。\r\n"
                        u"データの整合性を調整しています。\r\n"
                        u"多少時間が掛る場合がありますが，そのままお待ち下さい。",
                        MsgAnswer::Ok, [&] { EXPECT_TRUE(splash.Visible()); });
    start();
    expectMainWindow();
}

TEST_F(TolvekMainTest, AnEmptyFolderGetsAnArchiveOfSixTablesAndTheMainWindowComesUp)
{
    boxes.expectAndLook(kFirstStart, MsgAnswer::Ok, [&] {
        EXPECT_TRUE(splash.Visible());
        EXPECT_FALSE(window.Visible());
    });
    const ModalScript settings("frmOption", [](QWidget& shown) { press(shown, "cmbCancel"); });
    start();
    expectMainWindow();
    EXPECT_EQ(gDbPath, joinPath(appPath(), u"Tolvek.Mdb"));
    EXPECT_EQ(gHelpPath, joinPath(appPath(), u"Tolvek.hlp"));
    EXPECT_EQ(gIniPath, joinPath(appPath(), u"TOLVEK.ini"));
    EXPECT_EQ(tableNames(),
              (std::vector<Text>{u"tblFilter", u"tblFilterData", u"tblFriend",
                                 u"tblSearch_Addresses", u"tblSearch_Name", u"tblTolvek"}));
    EXPECT_EQ(rows(u"tblTolvek"), 0);
    EXPECT_EQ(window.lstNameOrAddr->ListCount(), 0);
    EXPECT_TRUE(exists("Tolvek.Mdb.Bak")) << "compacted after the creation too";
    EXPECT_FALSE(exists("Tolvek.Mdb.New"));
    EXPECT_FALSE(exists("TOLVEK.ini")) << "settings are written at the end alone";
}

TEST_F(TolvekMainTest, TheRunningVersionWithoutADatabaseMakesANewEmptyOne)
{
    givenSettings("331");
    start();
    expectMainWindow();
    EXPECT_EQ(rows(u"tblTolvek"), 0);
}

TEST_F(TolvekMainTest, AnArchiveThatIsThereIsCompactedAndShown)
{
    givenSettings("331");
    const Text path = joinPath(appPath(), u"Tolvek.Mdb");
    gDbPath = path;
    Table_Create();
    store(mail(u"hanako@example.jp", u"taro@example.jp"));
    edSearch_Addr();
    start();
    expectMainWindow();
    EXPECT_EQ(rows(u"tblTolvek"), 1);
    EXPECT_EQ(rows(u"tblTolvek", path + u".Bak"), 1);
    ASSERT_EQ(window.lstNameOrAddr->ListCount(), 2);
    EXPECT_EQ(window.lstNameOrAddr->List(0), u"hanako@example.jp");
}

TEST_F(TolvekMainTest, ASecondCopyIsToldSoAndTouchesNothing)
{
    givenSettings("331");
    const std::string settings = readBytes(file("TOLVEK.ini"));
    App.PrevInstance = -1;
    boxes.expectAndLook(u"Tolvekはすでに実行されています。", MsgAnswer::Ok,
                        [&] { EXPECT_FALSE(splash.Loaded()); });
    EXPECT_THROW(start(), ProgramEnd);
    EXPECT_EQ(boxes.shown()[0].title, u"Tolvek");
    EXPECT_FALSE(splash.Loaded());
    EXPECT_FALSE(window.Loaded());
    EXPECT_EQ(fileNames(folder.path()), std::vector<std::string>{"TOLVEK.ini"});
    EXPECT_EQ(readBytes(file("TOLVEK.ini")), settings);
}

// A value that is no number is reported, and the start goes on. The same value then
// ends the reading of the settings, so the address stays empty.
class TolvekMainBadVersionTest : public TolvekMainTest,
                                 public ::testing::WithParamInterface<const char*> {};

TEST_P(TolvekMainBadVersionTest, IsToldAndTheStartGoesOn)
{
    givenSettings(GetParam());
    std::vector<Text> reported;
    hooks::setMsgBox([&](const MsgBoxRequest& box) {
        reported.push_back(box.title + u": " + box.text.substr(0, 4));
        return MsgAnswer::Ok;
    });
    start();
    ASSERT_FALSE(reported.empty());
    EXPECT_EQ(reported[0].find(u"エラーメッセージ (Main)"), 0u) << toUtf8(reported[0]);
    ASSERT_GE(reported.size(), 3u);
    EXPECT_EQ(reported[1], u"Tolvek: Tolv") << "the upgrade runs";
    EXPECT_EQ(reported[2].find(u"エラーメッセージ (Form_Initialize)"), 0u) << toUtf8(reported[2]);
    expectMainWindow();
    EXPECT_TRUE(exists("Tolvek.Mdb"));
}

INSTANTIATE_TEST_SUITE_P(EmptyOrNoNumber, TolvekMainBadVersionTest,
                         ::testing::Values("", "abc", "3.3a"));

// Every path of a read depends on that folder. Without its key the default is used.
TEST_F(TolvekMainTest, AnEmptyPostPetFolderEndsTheProgramBeforeTheMainWindowAppears)
{
    const std::string settings = "[PostPet Mail Option]\r\nMy Mail Addr=taro@example.jp\r\n";
    writeBytes(file("TOLVEK.ini"), settings + "PostPet Dir=\r\n");
    const Text path = joinPath(appPath(), u"TOLVEK.ini");
    boxes.expectAndLook(path + u"　読み込みエラー　PostPet Path", MsgAnswer::Ok, [&] {
        EXPECT_TRUE(splash.Visible());
        EXPECT_FALSE(window.Visible());
    });
    EXPECT_THROW(start(), ProgramEnd);
    EXPECT_FALSE(window.Visible());
    EXPECT_EQ(readBytes(file("TOLVEK.ini")), settings + "PostPet Dir=\r\n");
    EXPECT_FALSE(exists("TOLVEK.ini.Old"));
}

TEST_F(TolvekMainTest, ASettingsFileWithoutThePostPetFolderGivesTheDefault)
{
    givenSettings("331");
    start();
    expectMainWindow();
    EXPECT_EQ(gPostPetDir, u"C:\\Program Files\\So-net\\PostPet for Windows ver. 2.0");
}

TEST_F(TolvekMainTest, ADamagedDatabaseIsAskedForAndARefusalEndsTheProgramWithTheFileUntouched)
{
    givenSettings("331");
    writeBytes(file("Tolvek.Mdb"), std::string(5000, 'x'));
    boxes.expect(kAnew, MsgAnswer::No, u"Tolvek");
    boxes.expect(u"DB が壊れています\r\n   修復が必要です。", MsgAnswer::Ok, u"Tolvek");
    EXPECT_THROW(start(), ProgramEnd);
    EXPECT_FALSE(window.Loaded());
    EXPECT_EQ(readBytes(file("Tolvek.Mdb")), std::string(5000, 'x'));
}

TEST_F(TolvekMainTest, ADamagedDatabaseIsRepairedFromTheBak)
{
    givenOnlyABakWithMail();
    writeBytes(file("Tolvek.Mdb"), std::string(5000, 'x'));
    boxes.expect(kRepair, MsgAnswer::Yes, u"Tolvek");
    start();
    expectMainWindow();
    EXPECT_EQ(rows(u"tblTolvek"), 1);
}

// The new database ends up as .Bak, which is established behaviour; the first list
// creates another.
TEST_F(TolvekMainTest, ADamagedDatabaseThatIsGivenUpLeavesAnEmptyArchiveAndAnEmptyBak)
{
    givenSettings("331");
    writeBytes(file("Tolvek.Mdb"), std::string(5000, 'x'));
    std::vector<Text> reported;
    hooks::setMsgBox([&](const MsgBoxRequest& box) {
        reported.push_back(box.text);
        return box.buttons == MsgButtons::YesNo && reported.size() > 1 ? MsgAnswer::No
                                                                       : MsgAnswer::Yes;
    });
    start();
    ASSERT_FALSE(reported.empty());
    EXPECT_EQ(reported[0], kAnew);
    expectMainWindow();
    EXPECT_EQ(rows(u"tblTolvek"), 0);
    EXPECT_EQ(rows(u"tblTolvek", gDbPath + u".Bak"), 0);
}

TEST_F(TolvekMainTest, TheSplashStandsWhileTheDatabaseIsMadeAndCompactedAndCantBeClosed)
{
    givenSettings("331");
    int seen = 0;
    hooks::setFileProbe([&](FileOperation operation, const Path&) {
        if (operation != FileOperation::Create && operation != FileOperation::Replace) return;
        ++seen;
        EXPECT_TRUE(splash.Visible());
        EXPECT_FALSE(window.Visible());
        splash.window()->close();
        EXPECT_TRUE(splash.Visible());
    });
    start();
    EXPECT_GT(seen, 0);
    hooks::setFileProbe({});
    expectMainWindow();
}

TEST_F(TolvekMainTest, AWholeCopyOfACutOffCompactionIsPutInPlace)
{
    givenSettings("331");
    gDbPath = joinPath(appPath(), u"Tolvek.Mdb");
    Table_Create();
    store(mail(u"hanako@example.jp", u"taro@example.jp"));
    renameFile(file("Tolvek.Mdb"), file("Tolvek.Mdb.New"));
    start();
    EXPECT_EQ(rows(u"tblTolvek"), 1);
}

TEST_F(TolvekMainTest, WhatACutOffBackUpWasWritingIntoGoes)
{
    givenSettings("331");
    writeBytes(file("Tolvek_20000225.Mdb.Compact"), "half");
    start();
    expectMainWindow();
    EXPECT_FALSE(exists("Tolvek_20000225.Mdb.Compact"));
}

TEST_F(TolvekMainTest, AnUnfinishedFileThatCantBeDeletedIsToldAndTheStartGoesOn)
{
    givenSettings("331");
    writeBytes(file("Tolvek_20000225.Mdb.Compact"), "half");
    hooks::setFileProbe([](FileOperation operation, const Path& path) {
        if (operation == FileOperation::Remove &&
            path.extension() == toUtf8(DBEngine::kUnfinishedSuffix))
            throw std::system_error(std::make_error_code(std::errc::io_error));
    });
    std::vector<Text> titles;
    hooks::setMsgBox([&](const MsgBoxRequest& box) {
        titles.push_back(box.title);
        return MsgAnswer::Ok;
    });
    start();
    hooks::setFileProbe({});
    EXPECT_EQ(titles, std::vector<Text>{u"エラーメッセージ (Main)"});
    expectMainWindow();
}

TEST_F(TolvekMainTest, APreviousGenerationWithMailOutlivesTheCreationOfANewArchive)
{
    givenOnlyABakWithMail();
    start();
    EXPECT_EQ(rows(u"tblTolvek"), 0);
    EXPECT_EQ(rows(u"tblTolvek", gDbPath + u".Kept"), 1);
}

TEST_F(TolvekMainTest, ACreationThatFailsLeavesThePreviousGenerationKeptAside)
{
    givenOnlyABakWithMail();
    hooks::setFileProbe([](FileOperation operation, const Path& path) {
        if (operation == FileOperation::Create && path.extension() == toUtf8(kCreateSuffix))
            throw std::system_error(std::make_error_code(std::errc::no_space_on_device));
    });
    hooks::setMsgBox([](const MsgBoxRequest& box) {
        return box.buttons == MsgButtons::YesNo ? MsgAnswer::No : MsgAnswer::Ok;
    });
    start();
    hooks::setFileProbe({});
    EXPECT_EQ(rows(u"tblTolvek", gDbPath + u".Kept"), 1);
}

// Otherwise the creation and the compaction after it would delete it.
TEST_F(TolvekMainTest, APreviousGenerationThatCantBeKeptAsideEndsTheStart)
{
    givenOnlyABakWithMail();
    hooks::setFileProbe([](FileOperation operation, const Path& path) {
        if (operation == FileOperation::Rename && path.extension() == toUtf8(kBakSuffix))
            throw std::system_error(std::make_error_code(std::errc::io_error));
    });
    hooks::setMsgBox([](const MsgBoxRequest&) { return MsgAnswer::Ok; });
    EXPECT_THROW(start(), ProgramEnd);
    hooks::setFileProbe({});
    EXPECT_FALSE(exists("Tolvek.Mdb"));
    EXPECT_EQ(rows(u"tblTolvek", gDbPath + u".Bak"), 1);
}

}
}
