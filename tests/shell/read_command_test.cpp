#include "app/database.h"
#include "app/read_log.h"
#include "app/settings.h"
#include "app/state.h"
#include "app/test_hooks.h"
#include "browse/navigator.h"
#include "filter/filter_rules.h"
#include "import/mail_box_read.h"
#include "platform/runtime/test_hooks.h"
#include "shell/delete_commands.h"
#include "shell/read_command.h"
#include "support/archive_fixture.h"
#include "support/modal_script.h"
#include "support/report_list.h"
#include "support/yield_watch.h"
#include "window/frm_tolvek.h"
#include "window/status.h"

#include <vector>

namespace tolvek::test {
namespace {

struct Call {
    Text list, mail, temp;
    bool operator==(const Call&) const = default;
};

// A temp file with one mail.
std::string tempFile(const std::string& sender, const std::string& date)
{
    return "\"<Start>\"\r\nFrom:<" + sender + ">\r\nTo:<taro@example.jp>\r\nSubject:hello\r\n" +
           "Date:" + date + "\r\nMail:\r\ntext\r\n<End>\r\n";
}

class ReadCommandTest : public ArchiveFixture {
protected:
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        gPostPetDir = u"/post";
        gSendMailReadOption = {};
        gRecievMailReadOption = {};
        gDisplayType = 0;
        gBackUpDisp = 0;
        gBusyFlag = 0;
        gMailReadCancel = 0;
        gFilterRule = {};
        gFilterRuleCnt = gNonCopyRuleCnt = 0;
        gMonthName[1] = u"Feb";
        fillMailBoxTable();
        converterLibrary().Tolvek_Edit = [this](const Text& list, const Text& box, const Text& temp,
                                                Int16& count, Int16& status) {
            calls.push_back({list, box, temp});
            count = 0;
            status = 0;
            if (convert) convert(count, status);
        };
        form.Show();
    }
    void TearDown() override
    {
        form.Unload();
        ArchiveFixture::TearDown();
    }

    void receive(int element, int value = 1) { gRecievMailReadOption[element] = value; }
    void send(int element, int value = 1) { gSendMailReadOption[element] = value; }

    // Makes every box hold the same single mail.
    void givenOneMail()
    {
        convert = [&](Int16& count, Int16&) {
            count = 1;
            writeBytes(file("Tolvek.Tmp"),
                       tempFile("hanako@example.jp", "Tue, 15 Feb 2000 10:11:12"));
        };
    }
    void clickRead(const char* button = "cmbMail_Ok")
    {
        const ModalScript dialog("frmMailReadOpt", [=](QWidget& shown) { press(shown, button); });
        comMailRead_Click(form);
    }

    static Call box(TextView folder, TextView list, TextView mailFile)
    {
        const Text place = joinPath(u"/post", folder);
        return {joinPath(place, list), joinPath(place, mailFile),
                joinPath(appPath(), u"Tolvek.Tmp")};
    }

    std::vector<Call> calls;
    std::vector<Text> titles; // the titles of the boxes, for tests that handle them themselves
    std::function<void(Int16& count, Int16& status)> convert;
    frmTolvek form;
};

TEST_F(ReadCommandTest, CancelChangesNothing)
{
    receive(0);
    form.txtMail->setText(u"a mail");
    form.lstSubject->AddItem(u"a subject");
    clickRead("cmbMail_Cancel");
    EXPECT_TRUE(calls.empty());
    EXPECT_EQ(form.txtMail->Text(), u"a mail");
    EXPECT_EQ(form.lstSubject->ListCount(), 1);
    EXPECT_EQ(gBusyFlag, 0);
    EXPECT_TRUE(form.comMailRead->Enabled());
}

TEST_F(ReadCommandTest, ItsAccountIsWrittenBesideTheDatabase)
{
    receive(0);
    givenOneMail();
    clickRead();
    const auto records = parseReadLog(fromUtf8(readFile(file("TolvekRead.log"))));
    ASSERT_EQ(records.size(), 1u);
    EXPECT_EQ(records[0].boxes.at(0).stored, 1);
}

TEST_F(ReadCommandTest, AnAccountThatCantBeWrittenIsLostWithoutABox)
{
    receive(0);
    givenOneMail();
    std::filesystem::create_directory(file("TolvekRead.log"));
    clickRead();
    EXPECT_EQ(rows(u"tblTolvek"), 1);
    EXPECT_TRUE(form.comMailRead->Enabled());
}

TEST_F(ReadCommandTest, OnlyTheFourthReceiveDrawer)
{
    receive(4);
    MailBoxRead();
    EXPECT_EQ(calls, std::vector<Call>{
                         box(u"受信フォルダ", u"緑色の引出しリスト.ppl", u"緑色の引出し.ppm")});
}

TEST_F(ReadCommandTest, TheBoxesComeInOneFixedOrder)
{
    for (const int element : {0, 2, 9})
        receive(element);
    for (const int element : {0, 1})
        send(element);
    MailBoxRead();
    EXPECT_EQ(calls, (std::vector<Call>{
                         box(u"受信フォルダ", u"受信リスト.ppl", u"受信メール.ppm"),
                         box(u"受信フォルダ", u"黄色の引出しリスト.ppl", u"黄色の引出し.ppm"),
                         box(u"受信フォルダ", u"橙色の引出しリスト.ppl", u"橙色の引出し.ppm"),
                         box(u"送信フォルダ", u"送信リスト.ppl", u"送信メール.ppm"),
                         box(u"送信フォルダ", u"ピンクの引出しリスト.ppl", u"ピンクの引出し.ppm"),
                     }));
}

TEST_F(ReadCommandTest, TheFolderOfTheSettingsIsTrimmed)
{
    gPostPetDir = u" /post　";
    send(0);
    MailBoxRead();
    EXPECT_EQ(calls, std::vector<Call>{box(u"送信フォルダ", u"送信リスト.ppl", u"送信メール.ppm")});
}

TEST_F(ReadCommandTest, AnElementWithoutFilesGivesAPathThatEndsInTheFoldersSeparator)
{
    const Text separator(1, static_cast<char16_t>(Path::preferred_separator));
    receive(10);
    receive(15);
    MailBoxRead();
    ASSERT_EQ(calls.size(), 2u);
    for (const Call& call : calls) {
        EXPECT_EQ(call.list, joinPath(u"/post", u"受信フォルダ") + separator);
        EXPECT_EQ(call.mail, call.list);
    }
}

TEST_F(ReadCommandTest, TheLastElementOfTheArrayIsNeverLookedAt)
{
    receive(16);
    MailBoxRead();
    EXPECT_TRUE(calls.empty());
}

TEST_F(ReadCommandTest, AValueOfTwoIsShownAsSetButItsBoxIsntRead)
{
    receive(0, 2);
    send(2, -1);
    send(0);
    MailBoxRead();
    EXPECT_EQ(calls, std::vector<Call>{box(u"送信フォルダ", u"送信リスト.ppl", u"送信メール.ppm")});
}

TEST_F(ReadCommandTest, EachSidesMailsAreStoredWithItsFlag)
{
    receive(0);
    send(0);
    convert = [&](Int16& count, Int16&) {
        count = 1;
        writeBytes(file("Tolvek.Tmp"), tempFile("a@example.jp", "Tue, 15 Feb 2000 10:11:1" +
                                                                    std::to_string(calls.size())));
    };
    MailBoxRead();
    EXPECT_EQ(rows(u"tblTolvek WHERE (tblTolvek_SndRcvFlag = False)"), 1);
    EXPECT_EQ(rows(u"tblTolvek"), 2);
}

TEST_F(ReadCommandTest, WithoutMailsTheTempFileIsntRead)
{
    writeBytes(file("Tolvek.Tmp"), tempFile("a@example.jp", "Tue, 15 Feb 2000 10:11:12"));
    receive(0);
    MailBoxRead();
    EXPECT_EQ(rows(u"tblTolvek"), 0);
}

TEST_F(ReadCommandTest, ABoxThatCantBeReadIsPassedOver)
{
    writeBytes(file("Tolvek.Tmp"), tempFile("a@example.jp", "Tue, 15 Feb 2000 10:11:12"));
    receive(0);
    convert = [](Int16& count, Int16& status) { count = 5, status = 1; };
    MailBoxRead();
    EXPECT_EQ(rows(u"tblTolvek"), 0);
}

// If a converter writes no status, the previous box's remains.
TEST_F(ReadCommandTest, TheStatusOfABoxStandsUntilTheConverterClearsIt)
{
    writeBytes(file("Tolvek.Tmp"), tempFile("a@example.jp", "Tue, 15 Feb 2000 10:11:12"));
    receive(0);
    receive(1);
    send(0);
    std::vector<int> before;
    converterLibrary().Tolvek_Edit = [&](const Text&, const Text&, const Text&, Int16& count,
                                         Int16& status) {
        before.push_back(status);
        EXPECT_EQ(count, 0);
        count = 1;
        if (before.size() == 1) status = 3;
    };
    MailBoxRead();
    EXPECT_EQ(before, (std::vector<int>{0, 3, 3}));
    EXPECT_EQ(rows(u"tblTolvek"), 0);
    before.assign(1, 9); // the next walk starts with 0 again
    MailBoxRead();
    EXPECT_EQ(before[1], 0);
}

TEST_F(ReadCommandTest, WhileReadingTheCommandsAreOffAndTheStatusTextNamesTheBox)
{
    receive(3);
    form.txtMail->setText(u"a mail");
    form.lblHead->setCaption(u"its head");
    form.lstSubject->AddItem(u"its subject");
    convert = [&](Int16&, Int16&) {
        EXPECT_FALSE(form.comMailRead->Enabled());
        EXPECT_FALSE(form.comEnd->Enabled());
        EXPECT_EQ(gBusyFlag, -1);
        EXPECT_EQ(gStatusLines[0], u"ＰｏｓｔＰｅｔ の ");
        EXPECT_EQ(gStatusLines[1], u"　Ｍａｉｌを読み込んでいます。");
        EXPECT_EQ(gStatusLines[2], u"　少々お待ちください。");
        EXPECT_EQ(gStatusLines[4], u"受信フォルダ   紫の引出し.ppm");
        EXPECT_EQ(form.txtMail->Text(), u"");
        EXPECT_EQ(form.lblHead->Caption(), u"");
        EXPECT_EQ(form.lstSubject->ListCount(), 0);
    };
    clickRead();
    EXPECT_EQ(calls.size(), 1u);
}

TEST_F(ReadCommandTest, AfterwardsTheCommandsAreOnAndTheReadButtonHasTheFocus)
{
    receive(0);
    form.lstSubject->SetFocus();
    clickRead();
    EXPECT_EQ(gBusyFlag, 0);
    EXPECT_EQ(form.txtMail->Text(), u"");
    for (const Text& line : gStatusLines)
        EXPECT_EQ(line, u"");
    EXPECT_TRUE(form.comMailRead->Enabled());
    EXPECT_TRUE(form.memFile->Enabled());
    EXPECT_TRUE(form.comMailRead->HasFocus());
}

// The database is removed while the boxes are read, so each later step reports itself.
TEST_F(ReadCommandTest, AfterTheBoxesAllIsUpdatedInItsOrderUnderAStatusTextOfItsOwn)
{
    receive(0);
    convert = [&](Int16&, Int16&) { gDbPath += u".gone"; };
    Reports reported;
    std::vector<Text> lines;
    hooks::setMsgBox([&](const MsgBoxRequest& shown) {
        reported.push_back(toUtf8(shown.title));
        if (reported.size() == 1) lines.assign(gStatusLines.begin(), gStatusLines.end());
        return MsgAnswer::Ok;
    });
    clickRead();
    EXPECT_EQ(
        reported,
        (Reports{"エラーメッセージ (edFriendName)", "エラーメッセージ (edSearch_Name)",
                 "エラーメッセージ (edSearch_Addr)", "エラーメッセージ (tblFilterData_Sel)"}));
    EXPECT_EQ(lines,
              (std::vector<Text>{u"", u"　Ｔｏｌｖｅｋの各データを", u"　　　更新しています。",
                                 u"　少々お待ちください。", u"", u""}));
}

// The user's mail to himself is in a box of each side; the first one read counts.
TEST_F(ReadCommandTest, AMailToOneselfIsStoredOnceAndAsReceived)
{
    receive(0);
    send(0);
    convert = [&](Int16& count, Int16&) {
        count = 1;
        writeBytes(file("Tolvek.Tmp"), tempFile("taro@example.jp", "Tue, 15 Feb 2000 10:11:12"));
    };
    MailBoxRead();
    EXPECT_EQ(calls.size(), 2u);
    EXPECT_EQ(column(u"SELECT tblTolvek_SndRcvFlag FROM tblTolvek"), std::vector<Text>{u"False"});
}

TEST_F(ReadCommandTest, AReadWithoutNewMailStillUpdatesAndRedraws)
{
    store(mail(u"hanako@example.jp", u"taro@example.jp"));
    receive(0);
    clickRead();
    EXPECT_EQ(rows(u"tblSearch_Name"), 2);
    EXPECT_EQ(rows(u"tblSearch_Addresses"), 2);
    ASSERT_EQ(form.lstNameOrAddr->ListCount(), 2);
    EXPECT_EQ(form.lstNameOrAddr->List(0), u"hanako@example.jp");
}

TEST_F(ReadCommandTest, TheNavigatorIsListedByTheDisplayType)
{
    const TextView captions[] = {u"アドレス　表示", u"送受信者名　表示", u"日付　表示",
                                 u"フィルター　表示", u"フィルター　表示"};
    store(mail(u"hanako@example.jp", u"taro@example.jp"));
    receive(0);
    for (int type = 0; type < 5; ++type) {
        gDisplayType = type;
        clickRead();
        EXPECT_EQ(form.lblNameOrAddr->Caption(), captions[type]);
    }
    gDisplayType = 0;
}

TEST_F(ReadCommandTest, ReadingTheSameBoxTwiceStoresNothingNew)
{
    receive(0);
    givenOneMail();
    clickRead();
    clickRead();
    EXPECT_EQ(rows(u"tblTolvek"), 1);
    EXPECT_EQ(form.lstNameOrAddr->ListCount(), 2);
    EXPECT_TRUE(exists("Tolvek.Tmp")) << "it stays until the program's end";
}

TEST_F(ReadCommandTest, AFailureSkipsTheOtherBoxesAndTheRestFollows)
{
    store(mail(u"hanako@example.jp", u"taro@example.jp"));
    receive(0);
    receive(1);
    convert = [](Int16&, Int16&) { throw RuntimeError(53); };
    hooks::setMsgBox([this](const MsgBoxRequest& shown) {
        titles.push_back(shown.title);
        return MsgAnswer::Ok;
    });
    clickRead();
    EXPECT_EQ(titles, std::vector<Text>{u"エラーメッセージ (comMailRead_Click)"});
    EXPECT_EQ(calls.size(), 1u);
    EXPECT_EQ(form.lstNameOrAddr->ListCount(), 2);
    EXPECT_TRUE(form.comMailRead->Enabled());
    EXPECT_EQ(gBusyFlag, 0);
}

TEST_F(ReadCommandTest, AMissingConverterLibraryIsTold)
{
    hooks::setConverterLibrary({});
    receive(0);
    hooks::setMsgBox([this](const MsgBoxRequest& shown) {
        titles.push_back(shown.title);
        EXPECT_NE(shown.text.find(u"53"), Text::npos);
        return MsgAnswer::Ok;
    });
    clickRead();
    EXPECT_EQ(titles, (std::vector<Text>{u"エラーメッセージ (edFriend)",
                                         u"エラーメッセージ (comMailRead_Click)"}));
    EXPECT_TRUE(form.comMailRead->Enabled());
}

TEST_F(ReadCommandTest, WithABackupOnDisplayTheButtonIsOff)
{
    gBackUpDisp = 1;
    dspEnable(form, false, gBackUpDisp);
    EXPECT_FALSE(form.comMailRead->Enabled());
}

TEST_F(ReadCommandTest, ACloseBoxOfTheDialogIsACancelToo)
{
    receive(0);
    const ModalScript dialog("frmMailReadOpt", [](QWidget& shown) { shown.close(); });
    comMailRead_Click(form);
    EXPECT_TRUE(calls.empty());
}

TEST_F(ReadCommandTest, TheFilterResultsAreBuiltAnewFromWhatWasRead)
{
    addFilter(10, 3, 0, u"花子", u"hanako");
    addFilter(20, 0, 1, u"読まない", u"nothing");
    tblFilter_Get();
    receive(0);
    givenOneMail();
    clickRead();
    EXPECT_EQ(column(u"SELECT tblFilterDt_SendAddr FROM tblFilterData"),
              std::vector<Text>{u"hanako@example.jp"});
}

// The friend book is imported first and written over the mails last.
TEST_F(ReadCommandTest, NewFriendsNamesAreThereWhenTheirMailsComeIn)
{
    converterLibrary().TolvekFriend_Edit = [this](const Text&, const Text&, Int16& count, Int16&) {
        EXPECT_TRUE(calls.empty());
        EXPECT_FALSE(form.comMailRead->Enabled());
        writeBytes(file("Friend.Tmp"), "\"4\",\"Tama\",\"Hanako\",\"hanako@example.jp\",12\r\n"
                                       "4,Pochi,,jiro@example.jp,1\r\n");
        count = 2;
    };
    store(mail(u"hanako@example.jp", u"taro@example.jp")); // stored under another name
    receive(0);
    convert = [&](Int16& count, Int16&) {
        EXPECT_EQ(rows(u"tblFriend"), 2);
        count = 2;
        std::string mails = tempFile("jiro@example.jp", "Tue, 15 Feb 2000 10:11:13");
        mails += tempFile("saburo@example.jp", "Tue, 15 Feb 2000 10:11:14").substr(9);
        writeBytes(file("Tolvek.Tmp"), mails);
    };
    gDisplayType = 1;
    clickRead();
    gDisplayType = 0;
    EXPECT_EQ(column(u"SELECT tblTolvek_SndName FROM tblTolvek"),
              (std::vector<Text>{u"Hanako", u"Pochi", u"設定無し"}));
    EXPECT_EQ(column(u"SELECT tblSearch_Name_Data FROM tblSearch_Name"),
              (std::vector<Text>{u"Hanako", u"Pochi", u"太郎", u"設定無し"}))
        << "the search tables hold the names as they are now";
    EXPECT_EQ(form.lstNameOrAddr->ListCount(), 4);
}

TEST_F(ReadCommandTest, AFriendWithNeitherNameIsStoredAsNotSet)
{
    addFriend(u"hanako@example.jp", u"", u"");
    receive(0);
    givenOneMail();
    MailBoxRead();
    EXPECT_EQ(value(u"SELECT tblTolvek_SndName FROM tblTolvek"), u"設定無し");
}

TEST_F(ReadCommandTest, AFailingFriendBookIsToldAndTheMailIsReadAllTheSame)
{
    converterLibrary().TolvekFriend_Edit = [](const Text&, const Text&, Int16&, Int16&) {
        throw RuntimeError(75);
    };
    boxes.expect(u"エラー番号： 75\r（" + errorText(75) + u"）", MsgAnswer::Ok,
                 u"エラーメッセージ (edFriend)");
    receive(0);
    givenOneMail();
    clickRead();
    EXPECT_EQ(rows(u"tblTolvek"), 1);
    EXPECT_EQ(gBusyFlag, 0);
}

// What a stranger writes in a mail is plain text at every step: read, listed by the
// rules, deleted with one of them.
TEST_F(ReadCommandTest, HostileNamesAndSubjectsAreTextOnTheirWholeWay)
{
    const std::string hostile[] = {"x'); DROP TABLE tblTolvek; --", "a|b\" OR 1=1 --",
                                   std::string("a\0b'; DELETE FROM tblFilter", 27), "%_*[!a]'||'"};
    addFilter(10, 1, 0, u"消す", u"DROP");
    addFilter(20, 3, 0, u"残す", u"example");
    tblFilter_Get();
    receive(0);
    convert = [&](Int16& count, Int16&) {
        std::string content = "\"<Start>\"\r\n";
        for (const std::string& text : hostile) {
            content += "From:" + text +
                       " <a@example.jp>\r\nTo:<taro@example.jp>\r\nSubject:" + text +
                       "\r\nDate:Tue, 15 Feb 2000 10:11:1" + std::to_string(int(count)) +
                       "\r\nMail:\r\n" + text + "\r\n<End>\r\n";
            ++count;
        }
        writeBytes(file("Tolvek.Tmp"), content);
    };
    clickRead();
    EXPECT_EQ(rows(u"tblTolvek"), 4);
    EXPECT_EQ(rows(u"tblFilterData WHERE (tblFilterDt_No = 10)"), 1);
    EXPECT_EQ(rows(u"tblFilterData WHERE (tblFilterDt_No = 20)"), 4);
    gDisplayType = 3;
    dspSelData(form);
    form.lstNameOrAddr->setListIndex(0);
    boxes.expect(u"選択されている抽出条件のメールを削除します\n\r     よろしいでしょうか？",
                 MsgAnswer::Yes);
    cmdAddrDel_Click(form);
    EXPECT_EQ(rows(u"tblTolvek"), 3);
    EXPECT_EQ(rows(u"tblFilter"), 1);
    EXPECT_EQ(rows(u"tblFilterData"), 3);
}

TEST_F(ReadCommandTest, TheWalkYieldsAfterEachDrawerChosenOrNot)
{
    EXPECT_EQ(yieldsOf([] { MailBoxRead(); }), 2 * 15);
    receive(0);
    receive(3);
    send(1);
    EXPECT_EQ(yieldsOf([] { MailBoxRead(); }), 2 * 15);
}

}
}
