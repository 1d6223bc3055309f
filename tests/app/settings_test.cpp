#include "app/settings.h"
#include "app/settings_file.h"
#include "platform/runtime/paths.h"
#include "platform/system/files.h"
#include "platform/system/process.h"
#include "platform/system/test_hooks.h"
#include "support/msg_box_script.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

class SettingsFindFileTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        setAppPath(pathText(program.path()));
        hooks::setWindowsFolder(windows.path());
        gIniPath.clear();
    }
    void TearDown() override
    {
        hooks::setFileProbe({});
        hooks::setWindowsFolder({});
    }
    Text settingsPath() const { return joinPath(pathText(program.path()), u"TOLVEK.ini"); }

    TempFolder program;
    TempFolder windows;
    MsgBoxScript boxes;
};

TEST_F(SettingsFindFileTest, WithoutAnOldFileOnlyThePathIsFixed)
{
    findSettingsFile();
    EXPECT_EQ(gIniPath, settingsPath());
    EXPECT_FALSE(fileExists(program / "TOLVEK.ini"));
}

TEST_F(SettingsFindFileTest, AnOldFileMovesBesideTheExecutable)
{
    writeBytes(windows / "TOLVEK.ini", "old");
    findSettingsFile();
    EXPECT_EQ(readBytes(program / "TOLVEK.ini"), "old");
    EXPECT_FALSE(fileExists(windows / "TOLVEK.ini"));
}

TEST_F(SettingsFindFileTest, AFileBesideTheExecutableStaysAndTheOldOneGoes)
{
    writeBytes(windows / "TOLVEK.ini", "old");
    writeBytes(program / "TOLVEK.ini", "own");
    findSettingsFile();
    EXPECT_EQ(readBytes(program / "TOLVEK.ini"), "own");
    EXPECT_FALSE(fileExists(windows / "TOLVEK.ini"));
}

TEST_F(SettingsFindFileTest, WithoutAWindowsFolderNothingIsLookedFor)
{
    hooks::setWindowsFolder({});
    findSettingsFile();
    EXPECT_EQ(gIniPath, settingsPath());
}

TEST_F(SettingsFindFileTest, AnOldFileThatCantBeDeletedIsReportedAndThePathIsFixed)
{
    writeBytes(windows / "TOLVEK.ini", "old");
    hooks::setFileProbe([](FileOperation operation, const Path&) {
        if (operation == FileOperation::Remove)
            throw std::system_error(std::make_error_code(std::errc::permission_denied));
    });
    boxes.expect(u"エラー番号： 75\r（" + errorText(75) + u"）", MsgAnswer::Ok,
                 u"エラーメッセージ (Form_Load)");
    findSettingsFile();
    EXPECT_EQ(gIniPath, settingsPath());
}

TEST(SettingsFriendTwipsTest, MeasuresStopAtTheEndsOfABasicInteger)
{
    EXPECT_EQ(friendTwips(5445), 5445);
    EXPECT_EQ(friendTwips(0.5), 0);
    EXPECT_EQ(friendTwips(1.5), 2);
    EXPECT_EQ(friendTwips(52987.5), 32767);
    EXPECT_EQ(friendTwips(-40000), -32768);
}

TEST(SettingsVersionTextTest, IsMajorMinorRevision)
{
    EXPECT_EQ(versionText(), u"3.3.1");
}

}
}
