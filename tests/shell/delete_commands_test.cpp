#include "filter/filter_results.h"
#include "filter/filter_rules.h"
#include "platform/runtime/test_hooks.h"
#include "shell/delete_commands.h"
#include "store/search_tables.h"
#include "support/report_list.h"
#include "support/screen_driver.h"
#include "support/window_fixture.h"
#include "window/status.h"

namespace tolvek::test {
namespace {

using Texts = std::vector<Text>;

const Text kMailQuestion = u"選択されているメールを削除します\n\r     よろしいでしょうか？";
const Text kEntryQuestions[] = {
    u"選択されているアドレスのメールを削除します\n\r     よろしいでしょうか？",
    u"選択されている方のメールを削除します\n\r     よろしいでしょうか？",
    u"選択されている日付のメールを削除します\n\r     よろしいでしょうか？",
    u"選択されている抽出条件のメールを削除します\n\r     よろしいでしょうか？",
};

class DeleteCommandsTest : public WindowFixture {
protected:
    void SetUp() override
    {
        WindowFixture::SetUp();
        onEvent(form.comMailDel, &CommandButton::Click, [this] { comMailDel_Click(form); });
        onEvent(form.cmdAddrDel, &CommandButton::Click, [this] { cmdAddrDel_Click(form); });
    }
    void TearDown() override
    {
        gDisplayType = 0;
        gFilterRule = {};
        gFilterRuleCnt = gNonCopyRuleCnt = 0;
        WindowFixture::TearDown();
    }

    static Texts left() { return column(u"SELECT tblTolvek_Subject FROM tblTolvek"); }
    void givenThreeMails()
    {
        store(mail(u"hanako@x.jp", u"taro@x.jp", u"first", u"20000215"));
        store(mail(u"taro@x.jp", u"hanako@x.jp", u"second", u"20000216"));
        store(mail(u"jiro@x.jp", u"taro@x.jp", u"third", u"20000217"));
        edSearch_Name();
        edSearch_Addr();
    }
    // Stores a name with a quote, bypassing the statement builder, as an old dump may.
    static void storeQuoted()
    {
        Database opened = DBEngine::OpenDatabase(gDbPath);
        Recordset mails = opened.OpenRecordset(Statement{u"SELECT * FROM tblTolvek"});
        mails.AddNew();
        int position = 0;
        for (const TextView value :
             {u"20000215", u"101112", u"0", u"0", u"o'; DROP TABLE tblFilter", u"a@x.jp", u"太郎",
              u"b@x.jp", u"件名"})
            mails.setField(position++, Text(value));
        mails.Update();
        opened.Close();
    }
    static void addManyRules(int count)
    {
        Database opened = DBEngine::OpenDatabase(gDbPath);
        inTransaction([&] {
            for (int n = 1; n <= count; ++n) {
                Statement sql{u"INSERT INTO tblFilter ( tblFilter_No,tblFilter_TermsCode,"
                              u"tblFilter_ActionCode,tblFilter_Header,tblFilter_Data ) VALUES( "};
                sql << n << u", 0, 0, '見出し', 'first' )";
                opened.Execute(sql, dbFailOnError);
            }
        });
        opened.Close();
    }
    // Stores the archive's rules and builds their results.
    static void run()
    {
        tblFilter_Get();
        tblFilterData_Sel();
    }
    void showType(int type)
    {
        gDisplayType = type;
        dspSelData(form);
    }
    void expectQuestion(const Text& question, MsgAnswer answer)
    {
        boxes.expect(question, answer, u"Tolvek");
    }

    void expectPanesEmpty()
    {
        EXPECT_EQ(form.lstNameOrAddr->SelCount(), 0);
        EXPECT_EQ(form.lstSubject->ListCount(), 0);
        EXPECT_EQ(form.lblRecCount->Caption(), u"");
        EXPECT_EQ(form.txtMail->Text(), u"");
        EXPECT_EQ(form.lblHead->Caption(), u"");
    }
    void expectCommandsOn()
    {
        EXPECT_EQ(gBusyFlag, 0);
        for (const Text& line : gStatusLines)
            EXPECT_EQ(line, u"");
        for (Control* control : std::initializer_list<Control*>{
                 form.comMailRead, form.comMailDel, form.cmdAddrDel, form.lstNameOrAddr})
            EXPECT_TRUE(control->Enabled());
        EXPECT_TRUE(form.memFile->Enabled());
        EXPECT_TRUE(form.comMailRead->HasFocus());
    }
};

TEST_F(DeleteCommandsTest, WithNothingSelectedBothButtonsAskAndDoNothing)
{
    givenThreeMails();
    for (int type = 0; type <= 4; ++type) {
        showType(type);
        click(*form.comMailDel);
        click(*form.cmdAddrDel);
    }
    EXPECT_TRUE(boxes.shown().empty());
    EXPECT_EQ(left().size(), 3u);
}

TEST_F(DeleteCommandsTest, WithABackupOnDisplayBothButtonsAreOff)
{
    givenThreeMails();
    showType(0);
    clickEntry(*form.lstNameOrAddr, 0);
    gBackUpDisp = 1;
    dspEnable(form, false, gBackUpDisp);
    click(*form.comMailDel);
    click(*form.cmdAddrDel);
    gBackUpDisp = 0;
    EXPECT_TRUE(boxes.shown().empty());
    EXPECT_EQ(left().size(), 3u);
}

TEST_F(DeleteCommandsTest, NoIsWhatEnterAnswersAndChangesNothing)
{
    givenThreeMails();
    addFilter(10, 1, 0, u"見出し", u"s");
    run();
    for (int type = 0; type <= 3; ++type) {
        showType(type);
        clickEntry(*form.lstNameOrAddr, 0);
        expectQuestion(kMailQuestion, MsgAnswer::No);
        click(*form.comMailDel);
        expectQuestion(kEntryQuestions[type], MsgAnswer::No);
        click(*form.cmdAddrDel);
        EXPECT_EQ(form.lstNameOrAddr->SelCount(), 1);
        EXPECT_EQ(form.lstSubject->SelCount(), 1);
        EXPECT_TRUE(form.comMailDel->Enabled());
    }
    EXPECT_EQ(left().size(), 3u);
    EXPECT_EQ(rows(u"tblFilter"), 1);
    for (const MsgBoxRequest& box : boxes.shown()) {
        EXPECT_EQ(box.buttons, MsgButtons::YesNo);
        EXPECT_EQ(box.defaultAnswer, MsgAnswer::No);
    }
}

TEST_F(DeleteCommandsTest, TheSelectedMailGoesAndTheUserStartsAgainFromTheNavigator)
{
    givenThreeMails();
    showType(0);
    clickEntry(*form.lstNameOrAddr, 0); // hanako: first and second, the second is selected
    expectQuestion(kMailQuestion, MsgAnswer::Yes);
    click(*form.comMailDel);
    EXPECT_EQ(left(), (Texts{u"first", u"third"}));
    EXPECT_EQ(form.lstNameOrAddr->ListCount(), 3);
    expectPanesEmpty();
    expectCommandsOn();
}

TEST_F(DeleteCommandsTest, AnAddressWhoseLastMailWentStaysListedAndShowsNothing)
{
    givenThreeMails();
    showType(0);
    clickEntry(*form.lstNameOrAddr, 1);
    EXPECT_EQ(form.lstNameOrAddr->Text(), u"jiro@x.jp");
    expectQuestion(kMailQuestion, MsgAnswer::Yes);
    click(*form.comMailDel);
    ASSERT_EQ(form.lstNameOrAddr->List(1), u"jiro@x.jp");
    clickEntry(*form.lstNameOrAddr, 1);
    EXPECT_EQ(form.lstSubject->ListCount(), 0);
    EXPECT_EQ(form.lblRecCount->Caption(), u"");
}

TEST_F(DeleteCommandsTest, ADeletedMailsResultLastsOnlyUntilTheFilterRunBehindIt)
{
    givenThreeMails();
    addFilter(10, 1, 0, u"見出し", u"r"); // first, third
    run();
    showType(3);
    clickEntry(*form.lstNameOrAddr, 0);
    expectQuestion(kMailQuestion, MsgAnswer::Yes);
    click(*form.comMailDel);
    EXPECT_EQ(left(), (Texts{u"first", u"second"}));
    EXPECT_EQ(column(u"SELECT tblFilterDt_Subject FROM tblFilterData"), Texts{u"first"});
    EXPECT_EQ(entries(*form.lstNameOrAddr), Texts{u"見出し"});
    expectPanesEmpty();
}

TEST_F(DeleteCommandsTest, AnEntryTakesItsMailsAndLeavesTheNavigator)
{
    struct Case {
        int type, entry;
        Texts left, listed;
    };
    const Case cases[] = {
        {0, 0, {u"third"}, {u"jiro@x.jp", u"taro@x.jp"}},
        {2, 1, {u"first", u"third"}, {u"20000217", u"20000215"}},
    };
    for (const Case& c : cases) {
        execute(Statement{u"DELETE FROM tblTolvek"});
        givenThreeMails();
        showType(c.type);
        clickEntry(*form.lstNameOrAddr, c.entry);
        expectQuestion(kEntryQuestions[c.type], MsgAnswer::Yes);
        click(*form.cmdAddrDel);
        EXPECT_EQ(left(), c.left);
        EXPECT_EQ(entries(*form.lstNameOrAddr), c.listed);
        expectPanesEmpty();
        expectCommandsOn();
    }
}

TEST_F(DeleteCommandsTest, ANameTakesTheMailsOfBothItsAddresses)
{
    Mail one = mail(u"a@x.jp", u"b@x.jp", u"one", u"20000215");
    Mail two = mail(u"other@y.jp", u"b@x.jp", u"two", u"20000216");
    Mail three = mail(u"a@x.jp", u"b@x.jp", u"three", u"20000217");
    three.SndName = u"新しい名前";
    for (const Mail& m : {one, two, three})
        store(m);
    edSearch_Name();
    showType(1);
    const Texts names = entries(*form.lstNameOrAddr);
    const auto hanako = std::find(names.begin(), names.end(), u"花子");
    clickEntry(*form.lstNameOrAddr, static_cast<int>(hanako - names.begin()));
    expectQuestion(kEntryQuestions[1], MsgAnswer::Yes);
    click(*form.cmdAddrDel);
    EXPECT_EQ(left(), Texts{u"three"});
    EXPECT_EQ(entries(*form.lstNameOrAddr).size(), 2u);
}

TEST_F(DeleteCommandsTest, AFilterViewTakesItsListedMailsAndItsRule)
{
    givenThreeMails();
    addFilter(10, 0, 0, u"別", u"third");
    addFilter(20, 1, 0, u"見出し", u"first");
    addFilter(30, 0, 1, u"読まない", u"x");
    run();
    store(mail(u"hanako@x.jp", u"taro@x.jp", u"new first", u"20000218"));
    for (const int type : {3, 9}) { // an unknown type lists filters too
        showType(type);
        form.lstNameOrAddr->setListIndex(type == 3 ? 1 : 0);
        expectQuestion(kEntryQuestions[3], MsgAnswer::Yes);
        click(*form.cmdAddrDel);
        expectPanesEmpty();
        expectCommandsOn();
        if (type == 3) {
            EXPECT_EQ(left(), (Texts{u"second", u"third", u"new first"}));
            EXPECT_EQ(entries(*form.lstNameOrAddr), Texts{u"別"});
        }
    }
    EXPECT_EQ(left(), (Texts{u"second", u"new first"}));
    EXPECT_EQ(column(u"SELECT tblFilter_No FROM tblFilter"), Texts{u"30"});
    EXPECT_EQ(gNonCopyRuleCnt, 1);
    EXPECT_EQ(rows(u"tblFilterData"), 0);
}

// Looks at the program while the box of a failure is shown during the deletion.
TEST_F(DeleteCommandsTest, AMailIsDeletedBehindTheStatusTextAndAnEntryBeforeIt)
{
    storeQuoted();
    edSearch_Addr();
    Texts firstLines, panes;
    const auto fillPanes = [&] {
        form.txtMail->setText(u"mail");
        form.lblHead->setCaption(u"head");
    };
    const auto lookAtFailures = [&](TextView routine) {
        hooks::setMsgBox(
            [&, title = u"エラーメッセージ (" + Text(routine) + u")"](const MsgBoxRequest& box) {
                if (box.buttons == MsgButtons::YesNo) return MsgAnswer::Yes;
                if (box.title == title) {
                    EXPECT_FALSE(form.comMailRead->Enabled());
                    EXPECT_EQ(gBusyFlag, gStatusLines[0].empty() ? 0 : -1);
                    firstLines.push_back(gStatusLines[0] + gStatusLines[1] + gStatusLines[2]);
                    panes.push_back(form.txtMail->Text() + form.lblHead->Caption());
                }
                return MsgAnswer::Ok;
            });
    };
    lookAtFailures(u"delOneMail");
    showType(0);
    clickEntry(*form.lstNameOrAddr, 0);
    fillPanes();
    click(*form.comMailDel);
    lookAtFailures(u"delMail");
    form.lstNameOrAddr->setList(0, u"o'hara");
    form.lstNameOrAddr->setListIndex(0);
    fillPanes();
    click(*form.cmdAddrDel);
    EXPECT_EQ(
        firstLines,
        (Texts{u"Ｔｏｌｖｅｋ の 　データベースを整理しています。　少々お待ちください。", u""}));
    EXPECT_EQ(panes, (Texts{u"", u"mailhead"})) << "emptied with the status text";
    expectPanesEmpty();
}

TEST_F(DeleteCommandsTest, AQuestionThatCantBeAskedIsToldAndDeletesNothing)
{
    givenThreeMails();
    showType(0);
    clickEntry(*form.lstNameOrAddr, 0);
    Texts reported;
    hooks::setMsgBox([&](const MsgBoxRequest& box) {
        if (box.buttons == MsgButtons::YesNo) throw RuntimeError(7);
        reported.push_back(box.title);
        return MsgAnswer::Ok;
    });
    click(*form.comMailDel);
    click(*form.cmdAddrDel);
    EXPECT_EQ(reported, (Texts{u"エラーメッセージ (comMailDel_Click)",
                               u"エラーメッセージ (cmdAddrDel_Click)"}));
    EXPECT_EQ(left().size(), 3u);
    EXPECT_TRUE(form.comMailDel->Enabled());
}

TEST_F(DeleteCommandsTest, AFailedStatementLeavesTheCommandsOnAndTheListsRebuilt)
{
    storeQuoted();
    edSearch_Addr();
    addFilter(10, 1, 0, u"見出し", u"件名");
    store(mail(u"c@x.jp", u"d@x.jp", u"件名", u"19990101"));
    showType(0);
    ReportList reports;
    reports.listen(MsgAnswer::Yes);
    clickEntry(*form.lstNameOrAddr, 0);
    EXPECT_EQ(reports.take(), Reports{"dspMail 3075"});
    click(*form.comMailDel);
    EXPECT_EQ(reports.take(), (Reports{"Tolvek: " + toUtf8(kMailQuestion), "delOneMail 3075",
                                       "tblFilterData_Set13 3075"}));
    expectPanesEmpty();
    expectCommandsOn();
    EXPECT_EQ(rows(u"tblFilterData"), 1); // as far as the run came
    form.lstNameOrAddr->setList(0, u"' OR 'a' = 'a");
    form.lstNameOrAddr->setListIndex(0);
    reports.take();
    click(*form.cmdAddrDel);
    EXPECT_EQ(reports.take(), (Reports{"Tolvek: " + toUtf8(kEntryQuestions[0]), "delMail 3075",
                                       "edSearch_Name 3075", "tblFilterData_Set13 3075"}));
    EXPECT_EQ(entries(*form.lstNameOrAddr).size(), 4u);
    expectPanesEmpty();
    expectCommandsOn();
    EXPECT_EQ(left().size(), 2u);
}

// The database is removed with the answer, so each step reports itself.
TEST_F(DeleteCommandsTest, AfterAnEntrysDeletionAllIsUpdatedInItsOrder)
{
    givenThreeMails();
    showType(0);
    clickEntry(*form.lstNameOrAddr, 0);
    Reports reported;
    hooks::setMsgBox([&](const MsgBoxRequest& box) {
        if (box.text == kEntryQuestions[0]) {
            gDbPath += u".gone";
            return MsgAnswer::Yes;
        }
        if (box.title.starts_with(u"エラー")) reported.push_back(toUtf8(box.title));
        return box.buttons == MsgButtons::YesNo ? MsgAnswer::No : MsgAnswer::Ok;
    });
    click(*form.cmdAddrDel);
    EXPECT_EQ(reported,
              (Reports{"エラーメッセージ (delMail)", "エラーメッセージ (edSearch_Name)",
                       "エラーメッセージ (edSearch_Addr)", "エラーメッセージ (tblFilter_Get)",
                       "エラーメッセージ (tblFilterData_Sel)"}));
    expectCommandsOn();
}

TEST_F(DeleteCommandsTest, MoreRulesThanTheTableHoldsAreToldAndTheMailIsGoneAllTheSame)
{
    givenThreeMails();
    addManyRules(257);
    showType(0);
    clickEntry(*form.lstNameOrAddr, 0);
    ReportList reports;
    reports.listen(MsgAnswer::Yes);
    click(*form.comMailDel);
    EXPECT_EQ(reports.take(), (Reports{"Tolvek: " + toUtf8(kMailQuestion), "tblFilter_Get 9"}));
    EXPECT_EQ(left(), (Texts{u"first", u"third"}));
    EXPECT_EQ(rows(u"tblFilterData"), 256);
    expectCommandsOn();
}

// What an archive may hold after an import whose converter let everything through.
TEST_F(DeleteCommandsTest, HostileSubjectsAndNamesAreDeletedAsTheTextsTheyAre)
{
    const Texts hostile{u"a|b", Text(u"a\0b", 3), u"\"; DROP TABLE tblTolvek; --"};
    int subKey = 0;
    for (const Text& text : hostile) {
        Mail m = mail(u"a@x.jp", u"b@x.jp", text);
        m.SndName = text;
        m.SubKey = subKey++;
        store(m);
    }
    edSearch_Addr();
    for (std::size_t n = hostile.size(); n > 0; --n) {
        showType(0);
        clickEntry(*form.lstNameOrAddr, 0);
        ASSERT_EQ(form.lstSubject->ListCount(), static_cast<int>(n));
        expectQuestion(kMailQuestion, MsgAnswer::Yes);
        click(*form.comMailDel);
        EXPECT_EQ(left().size(), n - 1);
    }
}

}
}
