#include "filter/filter_rules.h"
#include "platform/forms/input_box.h"
#include "platform/forms/test_hooks.h"
#include "platform/runtime/test_hooks.h"
#include "shell/friend_commands.h"
#include "store/database_files.h"
#include "store/search_tables.h"
#include "support/report_list.h"
#include "support/window_fixture.h"

namespace tolvek::test {
namespace {

using Texts = std::vector<Text>;

class FriendCommandsTest : public WindowFixture {
protected:
    void SetUp() override
    {
        WindowFixture::SetUp();
        gFilterRule = {};
        gFilterRuleCnt = gNonCopyRuleCnt = 0;
        hooks::setInputBox([this](const InputBoxRequest&) { return answer; });
        onEvent(form.memFriendEd, &MenuEntry::Click, [this] { memFriendEd_Click(form); });
        onEvent(form.memAddressAdd, &MenuEntry::Click, [this] { memAddressAdd_Click(form); });
        store(mail(u"hanako@x.jp", u"taro@x.jp"));
        edSearch_Name();
        edSearch_Addr();
    }
    void TearDown() override
    {
        hooks::setInputBox({});
        gDisplayType = 0;
        WindowFixture::TearDown();
    }

    void nameAnew() { form.memFriendEd->action().trigger(); }
    void addAddress() { form.memAddressAdd->action().trigger(); }
    // Lists the sender's mail and selects it.
    void selectMail()
    {
        dspSelData(form);
        form.lstNameOrAddr->setListIndex(0);
        ASSERT_EQ(form.lstSubject->SelCount(), 1);
    }
    void expectQuestion(MsgAnswer reply)
    {
        boxes.expect(u"おともだち帳に登録して宜しいですか。\r\n\r\nおともだちの名前：花子\r\n"
                     u"おともだちのメールアドレス：hanako@x.jp",
                     reply, u"おともだち登録");
    }
    void expectAtRest()
    {
        EXPECT_EQ(form.txtMail->Text(), u"");
        EXPECT_EQ(form.lblHead->Caption(), u"");
        EXPECT_EQ(form.lstSubject->ListCount(), 0);
        EXPECT_EQ(gBusyFlag, 0);
        EXPECT_EQ(gStatusLines[0], u"");
        EXPECT_TRUE(form.comMailRead->Enabled());
        EXPECT_TRUE(form.comMailRead->HasFocus());
        EXPECT_FALSE(gDb.isOpen());
        EXPECT_FALSE(exists("Tolvek.Mdb-wal"));
    }
    static Text senderName() { return value(u"SELECT tblTolvek_SndName FROM tblTolvek"); }

    Text answer = u"はなちゃん";
};

TEST_F(FriendCommandsTest, NamingAnewReachesMailsSearchTablesFilterResultsAndNavigator)
{
    addFriend(u"hanako@x.jp", u"はなちゃん", u"タマ");
    addFilter(10, 4, 0, u"花", u"はなちゃん");
    gDisplayType = 1;
    nameAnew();
    EXPECT_EQ(senderName(), u"はなちゃん");
    const Texts names{u"はなちゃん", u"太郎"};
    EXPECT_EQ(column(u"SELECT tblSearch_Name_Data FROM tblSearch_Name"), names);
    EXPECT_EQ(rows(u"tblSearch_Addresses"), 2);
    EXPECT_EQ(column(u"SELECT tblFilterDt_SendName FROM tblFilterData"), Texts{u"はなちゃん"});
    EXPECT_EQ(entries(*form.lstNameOrAddr), names);
    expectAtRest();
}

TEST_F(FriendCommandsTest, WhileNamingTheCommandsAreOffAndTheStatusTextSaysSo)
{
    selectMail();
    removeDatabase(gDbPath);
    Texts titles;
    hooks::setMsgBox([&](const MsgBoxRequest& box) {
        if (titles.empty()) { // the first step that uses the database
            EXPECT_EQ(gBusyFlag, -1);
            EXPECT_EQ((Texts{gStatusLines.begin(), gStatusLines.end()}),
                      (Texts{u"ともだち帳から", u"　名前の再設定を行っています。",
                             u"　少々お待ちください。", u"", u"", u""}));
            EXPECT_EQ(form.txtMail->Text() + form.lblHead->Caption(), u"");
            EXPECT_EQ(form.lstSubject->ListCount(), 0);
            EXPECT_FALSE(form.comMailRead->Enabled());
            EXPECT_FALSE(form.memFile->Enabled());
        }
        titles.push_back(box.title);
        return box.buttons == MsgButtons::YesNo ? MsgAnswer::No : MsgAnswer::Ok;
    });
    nameAnew();
    std::erase_if(titles, [](const Text& title) { return !title.starts_with(u"エラー"); });
    EXPECT_EQ(titles,
              (Texts{u"エラーメッセージ (edFriendName)", u"エラーメッセージ (edSearch_Addr)",
                     u"エラーメッセージ (edSearch_Name)", u"エラーメッセージ (tblFilter_Get)",
                     u"エラーメッセージ (tblFilterData_Sel)"}));
    expectAtRest();
}

// A report that can't be shown fails itself; the command then reports that failure.
TEST_F(FriendCommandsTest, AFailureOfAStepIsReportedUnderTheCommandsNameAndItGoesOn)
{
    removeDatabase(gDbPath);
    Texts titles;
    hooks::setMsgBox([&](const MsgBoxRequest& box) {
        if (box.title == u"エラーメッセージ (edFriendName)") throw RuntimeError(7);
        titles.push_back(box.title);
        return box.buttons == MsgButtons::YesNo ? MsgAnswer::No : MsgAnswer::Ok;
    });
    form.lstSubject->AddItem(u"a subject that isn't selected");
    addAddress();
    ASSERT_GE(titles.size(), 3u);
    EXPECT_EQ(titles[0], u"エラーメッセージ (memAddressAdd_Click)");
    EXPECT_EQ(titles[1], u"エラーメッセージ (memFriendEd_Click)");
    EXPECT_EQ(titles[2], u"エラーメッセージ (edSearch_Addr)");
    expectAtRest();
}

TEST_F(FriendCommandsTest, AddingAnAddressNamesItsMailsAtOnce)
{
    selectMail();
    expectQuestion(MsgAnswer::Yes);
    addAddress();
    EXPECT_EQ(rows(u"tblFriend"), 1);
    EXPECT_EQ(senderName(), u"はなちゃん");
    EXPECT_EQ(rows(u"tblSearch_Name"), 2);
    expectAtRest();
}

TEST_F(FriendCommandsTest, OnAnEmptySubjectListNothingHappens)
{
    form.txtMail->setText(u"as it was");
    addAddress();
    EXPECT_EQ(form.txtMail->Text(), u"as it was");
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(FriendCommandsTest, ARefusalRebuildsNothing)
{
    selectMail();
    const Text shown = form.txtMail->Text();
    expectQuestion(MsgAnswer::No);
    addAddress();
    answer.clear(); // Cancel
    expectQuestion(MsgAnswer::Yes);
    addAddress();
    EXPECT_EQ(rows(u"tblFriend"), 0);
    EXPECT_EQ(senderName(), u"花子");
    EXPECT_EQ(form.txtMail->Text(), shown);
    EXPECT_EQ(form.lstSubject->SelCount(), 1);
    EXPECT_FALSE(exists("Tolvek.Mdb-wal"));
}

// With rows but no selection the failure is reported, and the names are set all the
// same.
TEST_F(FriendCommandsTest, WithoutASelectedRowTheFailureIsToldAndTheNamesAreSetAnew)
{
    addFriend(u"hanako@x.jp", u"はなちゃん", u"タマ");
    selectMail();
    form.lstSubject->setListIndex(-1);
    expectDbReport(u"edFriendName", 9);
    addAddress();
    EXPECT_EQ(senderName(), u"はなちゃん");
    expectAtRest();
}

TEST_F(FriendCommandsTest, AQuoteInTheNewNameIsToldAndTheNamesAreSetAnew)
{
    addFriend(u"taro@x.jp", u"たろう", u"");
    selectMail();
    answer = u"O'Hara";
    ReportList reports;
    reports.listen(MsgAnswer::Yes);
    addAddress();
    EXPECT_EQ(reports.take().back(), "edFriendName 3075");
    EXPECT_EQ(value(u"SELECT tblTolvek_RcvName FROM tblTolvek"), u"たろう");
    expectAtRest();
}

}
}
