// Whole replies: the real main window types into a stand-in for PostPet on a real
// screen, and what arrived there is checked.
#include "reply_screen.h"

#include <algorithm>

namespace tolvek::test {
namespace {

const std::string kOtherScreens = "box PostPetのメイン画面以外が開いているとエラーになります。|"
                                  "メイン画面以外は終了してください。||"
                                  "準備が出来たら「ＯＫ」を押して下さい。";
const std::string kNotReached = "box %EEROR 5 SendMail : PostPet 2001 が起動しているか,|"
                                "先ほど起動したPostPetが終了しています。||"
                                "もう一度,「送信キー」を押してください。";
constexpr TextView kSubject = u"花見 +^%~(){}[] ｶﾞﾝﾊﾞﾚ ①㈱ Ａ１";
constexpr TextView kBody = u"お元気ですか。\r\n\r\n  +^%~(){}[] {TAB}\r\nﾊﾝｶｸ ①㈱ 終わり\r\n";

std::string shown(TextView text)
{
    std::string lines = toUtf8(text);
    std::erase(lines, '\r');
    return lines;
}

class ReplyScreenTest : public ReplyScreen {
protected:
    void SetUp() override
    {
        ReplyScreen::SetUp();
        Mail received = mail(u"hanako@example.jp", u"taro@example.jp", kSubject);
        received.Mail1 = kBody;
        store(received);
    }
    // PostPet first, so that the program's window is in front of it.
    void givenProgramBeside(StandIn& postPet)
    {
        givenManager();
        ASSERT_TRUE(postPet.run(environment));
        givenProgram();
    }
    static void expectReply(const StandIn& postPet)
    {
        comesTrue([&] { return !postPet.value("text").empty(); });
        EXPECT_EQ(postPet.value("address"), "hanako@example.jp");
        EXPECT_EQ(postPet.value("subject"), toUtf8(u"Re: " + Text(kSubject)));
        EXPECT_EQ(postPet.value("text"), shown(kBody));
        EXPECT_EQ(postPet.value("pasted"), toUtf8(kBody)) << "with its line ends";
        EXPECT_EQ(postPet.order(), (Lines{"address", "subject", "text"}));
    }
    // Presses until a complete reply has arrived, as a user would; each box on the way
    // must be one of the two expected ones.
    void replyAtLast(const StandIn& postPet)
    {
        const auto whole = [&] { return postPet.value("text") == shown(kBody); };
        for (int press = 0; press < 5 && !whole(); ++press) {
            for (const std::string& line : tell("reply"))
                EXPECT_TRUE(line == kOtherScreens || line == kNotReached) << line;
            postPet.isReady();
        }
    }
};

TEST_F(ReplyScreenTest, ARunningPostPetGetsAddressSubjectAndTextInTheirOrder)
{
    StandIn postPet(home);
    givenProgramBeside(postPet);
    EXPECT_EQ(tell("reply"), Lines{kOtherScreens});
    expectReply(postPet);
    EXPECT_EQ(postPet.mails(), 1);
    EXPECT_EQ(tell("reply"), Lines{kOtherScreens});
    EXPECT_TRUE(comesTrue([&] { return postPet.mails() == 2 && postPet.order().size() == 3; }));
    expectReply(postPet);
}

TEST_F(ReplyScreenTest, OnCancelNothingIsTyped)
{
    StandIn postPet(home);
    givenProgramBeside(postPet);
    tell("answer キャンセル");
    EXPECT_EQ(tell("reply"), Lines{kOtherScreens});
    EXPECT_EQ(postPet.mails(), 0);
}

TEST_F(ReplyScreenTest, APostPetThatDoesNotRunIsStarted)
{
    givenManager();
    const StandIn postPet(home);
    givenProgram();
    replyAtLast(postPet);
    expectReply(postPet);
}

TEST_F(ReplyScreenTest, TheFirstWindowOfAStartedPostPetIsWaitedFor)
{
    givenManager();
    const StandIn postPet(home, "start_delay=1000\n");
    givenProgram();
    EXPECT_EQ(tell("reply"), Lines{});
    expectReply(postPet);
}

TEST_F(ReplyScreenTest, AStartThatTakesLongIsToldAndTheNextPressGetsThrough)
{
    givenManager();
    const StandIn postPet(home, "start_delay=7500\n");
    givenProgram();
    EXPECT_EQ(tell("reply"), Lines{kNotReached});
    ASSERT_TRUE(postPet.isReady());
    EXPECT_EQ(tell("reply"), Lines{kOtherScreens});
    expectReply(postPet);
}

TEST_F(ReplyScreenTest, ANewMailScreenMayTakeItsTime)
{
    StandIn postPet(home, "screen_delay=40\n");
    givenProgramBeside(postPet);
    replyAtLast(postPet);
    expectReply(postPet);
}

TEST_F(ReplyScreenTest, TheNewMailScreenMayBeAWindowOfItsOwn)
{
    StandIn postPet(home, "screen=window\n");
    givenProgramBeside(postPet);
    replyAtLast(postPet);
    expectReply(postPet);
}

TEST_F(ReplyScreenTest, APostPetThatHasGoneIsStartedAgain)
{
    StandIn postPet(home);
    givenProgramBeside(postPet);
    EXPECT_EQ(tell("reply"), Lines{kOtherScreens});
    postPet.end();
    std::filesystem::remove(home / "PostPet20.exe.record");
    replyAtLast(postPet);
    expectReply(postPet);
}

TEST_F(ReplyScreenTest, APostPetThatGoesInTheMiddleIsReportedAndTheProgramGoesOn)
{
    StandIn postPet(home, "gone=1\n");
    givenProgramBeside(postPet);
    const Lines said = tell("reply");
    ASSERT_EQ(said.size(), 2u);
    EXPECT_TRUE(said.back().starts_with("box エラー番号： 5|")) << said.back();
    postPet.set("gone=0\n");
    std::filesystem::remove(home / "PostPet20.exe.record");
    replyAtLast(postPet);
    expectReply(postPet);
}

// This is what the box warns about: the keys go to the screen in front.
TEST_F(ReplyScreenTest, WithAnotherScreenOpenTheKeysGoThere)
{
    StandIn postPet(home, "dialog=1\n");
    givenProgramBeside(postPet);
    EXPECT_EQ(tell("reply").front(), kOtherScreens);
    EXPECT_TRUE(comesTrue([&] {
        return postPet.value("dialog").find("hanako@example.jp") != std::string::npos;
    })) << postPet.value("dialog");
    EXPECT_EQ(postPet.value("address"), "");
}

TEST_F(ReplyScreenTest, ACopyInAnotherFolderGetsNothing)
{
    givenManager();
    StandIn older(folder.path() / "older");
    ASSERT_TRUE(older.run(environment));
    StandIn postPet(home);
    ASSERT_TRUE(postPet.run(environment));
    StandIn newer(folder.path() / "newer");
    ASSERT_TRUE(newer.run(environment));
    givenProgram();
    EXPECT_EQ(tell("reply"), Lines{kOtherScreens});
    expectReply(postPet);
    EXPECT_EQ(older.mails() + newer.mails(), 0);
}

TEST_F(ReplyScreenTest, ARefusedSubjectStaysEmptyAndTheTextArrives)
{
    StandIn postPet(home);
    givenProgramBeside(postPet);
    tell("refuse Re: ");
    EXPECT_EQ(tell("reply"), Lines{kOtherScreens});
    EXPECT_TRUE(comesTrue([&] { return postPet.value("text") == shown(kBody); }));
    EXPECT_EQ(postPet.order(), (Lines{"address", "text"}));
}

TEST_F(ReplyScreenTest, TheFriendEditorWritesToItsAddress)
{
    StandIn postPet(home);
    givenProgramBeside(postPet);
    EXPECT_EQ(tell("friend  jiro@example.jp "), Lines{kOtherScreens});
    EXPECT_TRUE(comesTrue([&] { return postPet.record().contains(QStringLiteral("pasted")); }));
    EXPECT_EQ(postPet.value("address"), "jiro@example.jp");
    EXPECT_EQ(postPet.value("subject"), "");
    EXPECT_EQ(postPet.value("text"), "") << "nothing stands on the clipboard";
}

TEST_F(ReplyScreenTest, InTheFriendEditorAPostPetThatGoesInTheMiddleEndsTheProgram)
{
    StandIn postPet(home, "gone=1\n");
    givenProgramBeside(postPet);
    const Lines lines = tell("friend jiro@example.jp");
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0], kOtherScreens);
    EXPECT_TRUE(lines[1].starts_with("box 実行時エラー '5':|")) << lines[1];
    EXPECT_EQ(lines[2], "ended");
    EXPECT_EQ(driver.process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(driver.process.exitCode(), 0);
}

TEST_F(ReplyScreenTest, WithoutAWindowManagerNothingIsTyped)
{
    StandIn postPet(home);
    ASSERT_TRUE(postPet.run(environment, "shown"));
    givenProgram();
    EXPECT_EQ(tell("reply"), (Lines{kOtherScreens, kNotReached}));
    EXPECT_EQ(postPet.mails(), 0);
    EXPECT_EQ(postPet.value("room"), "");
}

}
}
