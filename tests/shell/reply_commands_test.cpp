#include "app/settings.h"
#include "app/state.h"
#include "friend/frm_friend.h"
#include "platform/system/test_hooks.h"
#include "reply/postpet_search.h"
#include "shell/reply_commands.h"
#include "store/search_tables.h"
#include "support/lasting_program.h"
#include "support/screen_driver.h"
#include "support/sent_keys.h"
#include "support/window_fixture.h"

namespace tolvek::test {
namespace {

namespace fs = std::filesystem;

constexpr TextView kOtherScreens = u"PostPetのメイン画面以外が開いているとエラーになります。\r\n"
                                   u"メイン画面以外は終了してください。\r\n\r\n"
                                   u"準備が出来たら「ＯＫ」を押して下さい。";
constexpr TextView kText = u"一行目\r\n\r\n  ｶﾅ①㈱ +^%~(){}[]\r\n";

class ReplyCommandsTest : public WindowFixture {
protected:
    void SetUp() override
    {
        WindowFixture::SetUp();
        home = fs::canonical(folder.path()) / "PostPet";
        fs::create_directory(home);
        gPostPetDir = pathText(home);
        Clipboard::SetText(u"before");
        Mail first = mail(u"hanako@x.jp", u"taro@x.jp", u"first");
        first.Mail1 = kText;
        store(first);
        edSearch_Addr();
        dspSelData(form);
    }
    void TearDown() override
    {
        gPostPetPid = 0;
        gPostPetDir.clear();
        WindowFixture::TearDown();
    }
    void selectMail()
    {
        clickEntry(*form.lstNameOrAddr, 0);
        clickEntry(*form.lstSubject, 0);
        ASSERT_EQ(form.lstSubject->SelCount(), 1);
    }
    // A program that only starts and reports it.
    void givenProgram() const
    {
        writeBytes(home / "PostPet20.exe", "#!/bin/sh\necho $$ > \"$0.id\"\n");
        fs::permissions(home / "PostPet20.exe", fs::perms::owner_all);
    }
    void expectStarted() const
    {
        const fs::path note = home / "PostPet20.exe.id";
        ASSERT_TRUE(comesTrue([&] { return readBytes(note).ends_with('\n'); }));
        EXPECT_EQ(gPostPetPid, std::stoi(readBytes(note)));
    }
    void expectReport(int number)
    {
        boxes.expect(u"エラー番号： " + decimal(number) + u"\r（" + errorText(number) + u"）",
                     MsgAnswer::Ok, u"エラーメッセージ (comSendMail_Click)");
    }
    void expectNotReached(int number)
    {
        boxes.expect(u"%EEROR " + decimal(number) +
                     u" SendMail : PostPet 2001 が起動しているか,\r\n"
                     u"先ほど起動したPostPetが終了しています。\r\n\r\n"
                     u"もう一度,「送信キー」を押してください。");
    }
    static Sent reply(std::int32_t id)
    {
        return {u"activate " + decimal(id), u"%F", u"N", u"hanako@x.jp{TAB}",
                u"Re: first{TAB}{TAB}",     u"%E", u"J"};
    }
    static Sent newMail(std::int32_t id, const Text& address)
    {
        return {u"activate " + decimal(id),
                u"%F",
                u"N",
                address + u"{TAB}",
                u"{TAB}{TAB}",
                u"%E",
                u"J"};
    }

    fs::path home;
    SentKeys sent;
    Form editor{u"frmFriend"};
};

TEST_F(ReplyCommandsTest, WithNoMailSelectedNothingHappensAtAll)
{
    const LastingProgram postPet(home / "PostPet20.exe");
    form.txtMail->setText(u"a status text");
    form.comMailRead->SetFocus();
    comSendMail_Click(form);
    EXPECT_EQ(Clipboard::GetText(), u"before");
    EXPECT_TRUE(form.comMailRead->HasFocus());
    EXPECT_EQ(gPostPetPid, 0);
    EXPECT_EQ(sent.take(), Sent{});
}

TEST_F(ReplyCommandsTest, TheShownTextIsOnTheClipboardAndARunningPostPetIsAskedFor)
{
    const LastingProgram postPet(home / "PostPet20.exe");
    selectMail();
    boxes.expectAndLook(kOtherScreens, MsgAnswer::Ok, [this] {
        EXPECT_EQ(Clipboard::GetText(), kText);
        EXPECT_TRUE(form.txtMail->HasFocus());
        EXPECT_EQ(boxes.shown().back().buttons, MsgButtons::OkCancel);
        EXPECT_EQ(sent.take(), Sent{});
    });
    comSendMail_Click(form);
    EXPECT_EQ(sent.take(), reply(postPet.id()));
}

TEST_F(ReplyCommandsTest, WhatStandsInThePaneIsPastedWhateverItIs)
{
    const LastingProgram postPet(home / "PostPet20.exe");
    selectMail();
    form.txtMail->setText(u"a status text\n");
    boxes.expect(kOtherScreens);
    comSendMail_Click(form);
    EXPECT_EQ(Clipboard::GetText(), u"a status text\n");
}

TEST_F(ReplyCommandsTest, CancelLeavesPostPetAlone)
{
    const LastingProgram postPet(home / "PostPet20.exe");
    selectMail();
    boxes.expect(kOtherScreens, MsgAnswer::Cancel);
    comSendMail_Click(form);
    EXPECT_EQ(sent.take(), Sent{});
    EXPECT_EQ(Clipboard::GetText(), kText);
}

TEST_F(ReplyCommandsTest, APostPetThatDoesNotRunIsStartedWithoutAQuestion)
{
    const LastingProgram elsewhere(home / "old" / "PostPet20.exe");
    givenProgram();
    selectMail();
    comSendMail_Click(form);
    expectStarted();
    EXPECT_EQ(sent.take(), reply(gPostPetPid));
}

TEST_F(ReplyCommandsTest, OneThatDoesNotAnswerYetIsToldAndTheNextPressFindsIt)
{
    const LastingProgram postPet(home / "PostPet20.exe");
    selectMail();
    boxes.expect(kOtherScreens);
    sent.refuse(u"activate " + decimal(postPet.id()));
    expectNotReached(5);
    comSendMail_Click(form);
    EXPECT_EQ(gPostPetPid, 0);
    SentKeys answering;
    boxes.expect(kOtherScreens);
    comSendMail_Click(form);
    EXPECT_EQ(answering.take(), reply(postPet.id()));
}

TEST_F(ReplyCommandsTest, AFailedStartIsReportedAndThenThatNoneIsReached)
{
    selectMail();
    sent.refuse(u"activate 0");
    expectReport(53);
    expectNotReached(5);
    comSendMail_Click(form);
    EXPECT_EQ(sent.take(), Sent{});
    EXPECT_EQ(gPostPetPid, 0);
}

TEST_F(ReplyCommandsTest, APostPetThatGoesInTheMiddleOfTheReplyIsReported)
{
    const LastingProgram postPet(home / "PostPet20.exe");
    selectMail();
    bool gone = false;
    sent.watch([&](const Text& step) {
        if (gone) throw RuntimeError(5);
        gone = step.starts_with(u"hanako");
    });
    boxes.expect(kOtherScreens);
    expectReport(5);
    comSendMail_Click(form);
    EXPECT_EQ(sent.take().back(), u"hanako@x.jp{TAB}");
}

TEST_F(ReplyCommandsTest, WithoutAListOfProcessesTheProgramEnds)
{
    selectMail();
    hooks::setProcessLister([]() -> std::vector<RunningProgram> {
        throw std::system_error(std::make_error_code(std::errc::permission_denied));
    });
    boxes.expect(u"ﾌﾟﾛｾｽｴﾝﾄﾘの取得に失敗しました", MsgAnswer::Ok, u"Tolvek");
    EXPECT_THROW(comSendMail_Click(form), ProgramEnd);
    hooks::setProcessLister({});
    EXPECT_FALSE(form.Loaded());
    EXPECT_EQ(sent.take(), Sent{});
}

TEST_F(ReplyCommandsTest, AnEmptyAddressDoesNothing)
{
    const LastingProgram postPet(home / "PostPet20.exe");
    for (const TextView address : {u"", u"  ", u"　 "})
        cmdSndMail_Click(editor, Text(address));
    EXPECT_EQ(sent.take(), Sent{});
    EXPECT_EQ(gPostPetPid, 0);
}

TEST_F(ReplyCommandsTest, AMailToAFriendHasTheBoxWithOkAloneAndTheOldClipboard)
{
    const LastingProgram postPet(home / "PostPet20.exe");
    boxes.expectAndLook(kOtherScreens, MsgAnswer::Ok,
                        [this] { EXPECT_EQ(boxes.shown().back().buttons, MsgButtons::Ok); });
    cmdSndMail_Click(editor, u" jiro@x.jp　");
    EXPECT_EQ(sent.take(), newMail(postPet.id(), u"jiro@x.jp"));
    EXPECT_EQ(Clipboard::GetText(), u"before");
}

TEST_F(ReplyCommandsTest, AMailToAFriendStartsPostPetToo)
{
    givenProgram();
    cmdSndMail_Click(editor, u"jiro@x.jp");
    expectStarted();
    EXPECT_EQ(sent.take(), newMail(gPostPetPid, u"jiro@x.jp"));
}

TEST_F(ReplyCommandsTest, InTheFriendEditorAFailedStartIsNobodysToAnswer)
{
    try {
        cmdSndMail_Click(editor, u"jiro@x.jp");
        FAIL() << "nothing could be started";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), 53);
    }
    EXPECT_EQ(sent.take(), Sent{});
}

TEST_F(ReplyCommandsTest, InTheFriendEditorAnUnreachedPostPetIsTold)
{
    const LastingProgram postPet(home / "PostPet20.exe");
    sent.refuse(u"%F");
    boxes.expect(kOtherScreens);
    expectNotReached(5);
    cmdSndMail_Click(editor, u"jiro@x.jp");
    EXPECT_EQ(gPostPetPid, 0);
}

}
}
