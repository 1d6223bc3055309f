#include "app/program_end.h"
#include "app/settings.h"
#include "app/settings_file.h"
#include "app/test_hooks.h"
#include "platform/runtime/codepage932.h"
#include "platform/runtime/paths.h"
#include "platform/system/files.h"
#include "platform/system/test_hooks.h"
#include "support/msg_box_script.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

struct ProgramEnd {};

// A window with its designed size, on a screen of 1024 by 768 pixels.
class DesignedWindow : public WindowPlacement {
public:
    std::int32_t Top() const override { return top; }
    std::int32_t Left() const override { return left; }
    std::int32_t Width() const override { return width; }
    std::int32_t Height() const override { return height; }
    void setTop(std::int32_t twips) override { top = twips; }
    void setLeft(std::int32_t twips) override { left = twips; }
    void setWidth(std::int32_t twips) override { width = twips; }
    void setHeight(std::int32_t twips) override { height = twips; }
    int WindowState() const override { return state; }
    std::int32_t ScreenWidth() const override { return screenWidth; }
    std::int32_t ScreenHeight() const override { return screenHeight; }

    std::int32_t top = 0, left = 0, width = 11745, height = 7404;
    std::int32_t screenWidth = 15360, screenHeight = 11520;
    int state = 0;
};

class SettingsFileTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        setAppPath(pathText(folder.path()));
        gIniPath = joinPath(appPath(), u"TOLVEK.ini");
        hooks::setEnd([](int) { throw ProgramEnd{}; });
        forget();
    }
    void TearDown() override { hooks::setEnd({}); }

    static void forget()
    {
        gVer = 0;
        for (Text* text : {&gPostPetDir, &gMyMailAddr, &gMyMailHandle, &gMyPetName, &gMailTextFont,
                           &gMailTextFontStyle})
            text->clear();
        gDisplayType = 0;
        gMailTextFontSize = 0;
        gSendMailReadOption = {};
        gRecievMailReadOption = {};
        gFriendTop = gFriendLeft = gFriendWidth = gFriendHeight = 0;
        gFriendColWidth = {};
    }
    void givenFile(TextView text) { writeBytes(folder / "TOLVEK.ini", toAnsi(text)); }
    Text fileText() const { return fromAnsi(readBytes(folder / "TOLVEK.ini")); }
    bool fileHolds(TextView line) const
    {
        return (u"\r\n" + fileText()).find(u"\r\n" + Text(line) + u"\r\n") != Text::npos;
    }
    int numberOfRead()
    {
        try {
            iniRead(window);
        } catch (const RuntimeError& error) {
            return error.number();
        }
        return 0;
    }

    TempFolder folder;
    MsgBoxScript boxes;
    DesignedWindow window;
};

TEST_F(SettingsFileTest, WithoutAFileEveryFieldTakesItsDefault)
{
    iniRead(window);
    EXPECT_EQ(gVer, 999);
    EXPECT_EQ(gPostPetDir, u"C:\\Program Files\\So-net\\PostPet for Windows ver. 2.0");
    EXPECT_EQ(gMyMailAddr, u"");
    EXPECT_EQ(gMyMailHandle, u"");
    EXPECT_EQ(gMyPetName, u"");
    EXPECT_EQ(gDisplayType, 0);
    EXPECT_EQ(gMailTextFont, u"ＭＳ ゴシック");
    EXPECT_EQ(gMailTextFontSize, 10);
    EXPECT_EQ(gMailTextFontStyle, u"0,0");
    EXPECT_EQ(gSendMailReadOption[0], 0);
    EXPECT_EQ(gRecievMailReadOption[15], 0);
    EXPECT_EQ(gFriendWidth, 9225);
    EXPECT_EQ(gFriendHeight, 5445);
    EXPECT_EQ(gFriendTop, 3038);  // 3037.5: halves round to even
    EXPECT_EQ(gFriendLeft, 3068); // 3067.5
    for (int column = 1; column <= 5; ++column)
        EXPECT_EQ(gFriendColWidth[column], 900);
}

TEST_F(SettingsFileTest, AFirstStartCentresTheWindowByItsDesignedSize)
{
    window.width = 10000; // as designed: the corner is calculated before the size
    window.height = 6000;
    iniRead(window);
    EXPECT_EQ(window.left, 2680);
    EXPECT_EQ(window.top, 2760);
    EXPECT_EQ(window.width, 11745);
    EXPECT_EQ(window.height, 7404);
}

TEST_F(SettingsFileTest, AnOffScreenPositionIsTakenAsItStands)
{
    givenFile(u"[Form Position]\r\nForm Top    Position=-9000\r\nForm Left   Position=99000\r\n"
              u"Form Width  Position=20000\r\nForm Height Position=15000\r\n");
    iniRead(window);
    EXPECT_EQ(window.top, -9000);
    EXPECT_EQ(window.left, 99000);
    EXPECT_EQ(window.width, 20000);
    EXPECT_EQ(window.height, 15000);
}

TEST_F(SettingsFileTest, TheFriendEditorIsCentredByTheSizeItWillHave)
{
    givenFile(u"[Friend Editer]\r\nWidth=3000\r\nHeight=\r\nCol Width2=1234\r\nCol Width3=\r\n");
    iniRead(window);
    EXPECT_EQ(gFriendLeft, 6180);
    EXPECT_EQ(gFriendHeight, 5445);
    EXPECT_EQ(gFriendColWidth[2], 1234);
    EXPECT_EQ(gFriendColWidth[3], 900);
}

TEST_F(SettingsFileTest, OnAVeryLargeScreenTheFriendEditorsCornerStopsAtSixteenBits)
{
    window.screenWidth = 115200;
    iniRead(window);
    EXPECT_EQ(gFriendLeft, 32767);
}

// A file of 60 MB used to be read once for each key.
TEST_F(SettingsFileTest, TheFileIsReadOnce)
{
    givenFile(u"[Tolvek Environment]\r\nVer=331\r\n");
    int openings = 0;
    hooks::setFileProbe([&](FileOperation operation, const Path& at) {
        if (operation == FileOperation::Open && at.filename() == "TOLVEK.ini") ++openings;
    });
    iniRead(window);
    hooks::setFileProbe({});
    EXPECT_EQ(openings, 1);
    EXPECT_EQ(gVer, 331);
}

TEST_F(SettingsFileTest, AnEmptyFontSizeGivesNineAMissingOneTen)
{
    givenFile(u"[Mail Font]\r\nMail Text Font Size=\r\n");
    iniRead(window);
    EXPECT_EQ(gMailTextFontSize, 9);
    givenFile(u"[Mail Font]\r\n");
    iniRead(window);
    EXPECT_EQ(gMailTextFontSize, 10);
}

TEST_F(SettingsFileTest, DigitsThatNoScreenShowsComeBackUnchanged)
{
    givenFile(u"[Mail Options]\r\nSend Mail Read Option=1,0,1,0,0,0,0,0,0,0,0,0,0,0,0,9\r\n");
    iniRead(window);
    EXPECT_EQ(gSendMailReadOption[0], 1);
    EXPECT_EQ(gSendMailReadOption[1], 0);
    EXPECT_EQ(gSendMailReadOption[2], 1);
    EXPECT_EQ(gSendMailReadOption[15], 9);
    iniWrite(window);
    EXPECT_TRUE(fileHolds(u"Send Mail Read Option=1,0,1,0,0,0,0,0,0,0,0,0,0,0,0,9"));
}

TEST_F(SettingsFileTest, TheCommasOfADigitListAreNeverLookedAt)
{
    givenFile(u"[Mail Options]\r\nSend Mail Read Option=1x2x3x4x5x6x7x8x9x0x1x2x3x4x5x6\r\n");
    iniRead(window);
    EXPECT_EQ(gSendMailReadOption[8], 9);
    EXPECT_EQ(gSendMailReadOption[15], 6);
}

TEST_F(SettingsFileTest, AnEmptyPostPetFolderEndsTheProgram)
{
    givenFile(u"[PostPet Mail Option]\r\nPostPet Dir=\r\n");
    boxes.expect(gIniPath + u"　読み込みエラー　PostPet Path", MsgAnswer::Ok, u"Tolvek");
    EXPECT_THROW(iniRead(window), ProgramEnd);
    givenFile(u"[PostPet Mail Option]\r\n");
    iniRead(window);
    EXPECT_EQ(gPostPetDir, u"C:\\Program Files\\So-net\\PostPet for Windows ver. 2.0");
}

// The folder wasn't read: after a bad value before it, or at a first start.
TEST_F(SettingsFileTest, AnEmptyPostPetFolderIsNeverWritten)
{
    givenFile(u"[Tolvek Environment]\r\nVer=x\r\n");
    EXPECT_EQ(numberOfRead(), 13);
    gPostPetDir = u" ";
    iniWrite(window);
    EXPECT_EQ(fileText().find(u"PostPet Dir"), Text::npos);
    EXPECT_EQ(numberOfRead(), 0) << "the next start goes on";
}

TEST_F(SettingsFileTest, AnEmptyPostPetFolderLeavesTheOneInTheFile)
{
    givenFile(u"[PostPet Mail Option]\r\nPostPet Dir=C:\\Mail\r\n");
    gPostPetDir.clear();
    iniWrite(window);
    EXPECT_TRUE(fileHolds(u"PostPet Dir=C:\\Mail"));
}

struct BadValue {
    TextView section, line;
};

TEST_F(SettingsFileTest, ABadValueGoesUpAndLeavesTheRestUnread)
{
    const BadValue table[] = {
        {u"Tolvek Environment", u"Ver="},
        {u"Tolvek Environment", u"Ver=3.3a"},
        {u"PostPet Mail Option", u"Display Type=name"},
        {u"Form Position", u"Form Width  Position=wide"},
        {u"Mail Options", u"Reciev Mail Read Option="},
        {u"Mail Options", u"Reciev Mail Read Option=0,0,0,0,0,0,0,0,0,0,0,0,0,0,0"},
        {u"Mail Options", u"Send Mail Read Option=0,0,x,0,0,0,0,0,0,0,0,0,0,0,0,0"},
    };
    for (const BadValue& bad : table) {
        forget();
        givenFile(u"[" + Text(bad.section) + u"]\r\n" + Text(bad.line) + u"\r\n");
        EXPECT_EQ(numberOfRead(), 13) << toUtf8(bad.line);
        EXPECT_EQ(gMailTextFont, u"");
        EXPECT_EQ(gFriendWidth, 0);
    }
}

TEST_F(SettingsFileTest, AFileThatCouldntBeReadIsKeptBesideTheNewOne)
{
    givenFile(u"[Tolvek Environment]\r\nVer=\r\n[PostPet Mail Option]\r\nMy Mail Addr=a@b.jp\r\n");
    const std::string before = readBytes(folder / "TOLVEK.ini");
    EXPECT_EQ(numberOfRead(), 13);
    iniWrite(window);
    EXPECT_EQ(readBytes(folder / "TOLVEK.ini.Old"), before);
    EXPECT_TRUE(fileHolds(u"My Mail Addr="));
}

TEST_F(SettingsFileTest, AGoodReadKeepsNoOldFile)
{
    givenFile(u"[Tolvek Environment]\r\nVer=331\r\n");
    iniRead(window);
    EXPECT_FALSE(fileExists(folder / "TOLVEK.ini.Old"));
}

TEST_F(SettingsFileTest, TheWholeVocabularyIsWrittenInItsOrder)
{
    iniRead(window);
    gMyMailAddr = u"taro@example.jp";
    gMyMailHandle = u"太郎";
    gMyPetName = u"モモ";
    gDisplayType = 2;
    iniWrite(window);
    EXPECT_EQ(gVer, 331);
    const Text no = u"=0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0\r\n";
    EXPECT_EQ(toUtf8(fileText()),
              toUtf8(u"[PostPet Mail Option]\r\n"
                     u"PostPet Dir=C:\\Program Files\\So-net\\PostPet for Windows ver. 2.0\r\n"
                     u"My Mail Addr=taro@example.jp\r\nMy Mail Handle=太郎\r\nMy Pet Name=モモ\r\n"
                     u"Display Type=2\r\n"
                     u"[Tolvek Environment]\r\nVer=331\r\n"
                     u"[Form Position]\r\nForm Top    Position=2058\r\n"
                     u"Form Left   Position=1808\r\nForm Width  Position=11745\r\n"
                     u"Form Height Position=7404\r\n"
                     u"[Mail Options]\r\nSend Mail Read Option" +
                     no + u"Reciev Mail Read Option" + no +
                     u"[Mail Font]\r\nMail Text Font=ＭＳ ゴシック\r\nMail Text Font Size=10\r\n"
                     u"Mail Text Font Style=0,0\r\n"
                     u"[Friend Editer]\r\nWidth=9225\r\nHeight=5445\r\nTop=3038\r\nLeft=3068\r\n"
                     u"Col Width1=900\r\nCol Width2=900\r\nCol Width3=900\r\nCol Width4=900\r\n"
                     u"Col Width5=900\r\n"));
}

TEST_F(SettingsFileTest, AMinimisedWindowLeavesTheLastPositionInTheFile)
{
    givenFile(u"[Form Position]\r\nForm Top    Position=100\r\nForm Left   Position=200\r\n"
              u"Form Width  Position=12000\r\nForm Height Position=8000\r\n");
    iniRead(window);
    window.top = -32000;
    window.left = -32000;
    window.state = 1;
    iniWrite(window);
    for (const TextView line : {u"Form Top    Position=100", u"Form Left   Position=200",
                                u"Form Width  Position=12000", u"Form Height Position=8000"})
        EXPECT_TRUE(fileHolds(line)) << toUtf8(line);
    EXPECT_TRUE(fileHolds(u"Col Width5=900"));
    EXPECT_TRUE(fileHolds(u"Ver=331"));
}

TEST_F(SettingsFileTest, AMaximisedWindowsValuesAreWrittenLikeAnyOthers)
{
    iniRead(window);
    window.top = -60;
    window.width = 15480;
    window.state = 2;
    iniWrite(window);
    EXPECT_TRUE(fileHolds(u"Form Top    Position=-60"));
    EXPECT_TRUE(fileHolds(u"Form Width  Position=15480"));
}

TEST_F(SettingsFileTest, AReadOnlyFileIsToldAndEndsTheProgramWithNothingSaved)
{
    givenFile(u"[PostPet Mail Option]\r\nMy Mail Addr=old@example.jp\r\n");
    iniRead(window);
    gMyMailAddr = u"new@example.jp";
    std::filesystem::permissions(folder / "TOLVEK.ini", std::filesystem::perms::owner_read);
    const std::string before = readBytes(folder / "TOLVEK.ini");
    boxes.expect(gIniPath + u"　書き込みエラー", MsgAnswer::Ok, u"Tolvek");
    EXPECT_THROW(iniWrite(window), ProgramEnd);
    EXPECT_EQ(readBytes(folder / "TOLVEK.ini"), before);
}

TEST_F(SettingsFileTest, ALongValueEndsAt254BytesWithNoHalfCharacter)
{
    givenFile(u"[PostPet Mail Option]\r\nMy Pet Name=a" + Text(200, u'あ') + u"\r\n");
    iniRead(window);
    EXPECT_EQ(gMyPetName, u"a" + Text(126, u'あ'));
}

}
}
