#include "platform/runtime/test_hooks.h"
#include "platform/system/test_hooks.h"
#include "shell/frm_tolvek_events.h"

#include "browse/navigator.h"
#include "filter/filter_rules.h"
#include "import/mail_box_read.h"
#include "platform/forms/events.h"
#include "platform/runtime/dates.h"
#include "platform/runtime/profile.h"
#include "shell/win_help.h"
#include "store/search_tables.h"
#include "support/archive_fixture.h"
#include "support/modal_script.h"
#include "window/status.h"

#include <QMenu>
#include <QTest>

namespace tolvek::test {
namespace {

std::string settingsFile(const std::string& more = {})
{
    return "[PostPet Mail Option]\r\nMy Mail Addr=taro@example.jp\r\n" + more;
}

class FrmTolvekEventsTest : public ArchiveFixture {
protected:
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        writeBytes(file("TOLVEK.ini"), settingsFile());
        setHelpViewer([this](const HelpRequest& request) {
            helpShown.push_back(request.file);
            return true;
        });
    }
    void TearDown() override
    {
        setHelpViewer({});
        hooks::setClock({});
        gUnloading = -1; // the window closes without the exit's steps
        form.Unload();
        gUnloading = 0;
        gBackUpDisp = 0;
        gBusyFlag = 0;
        gDisplayType = 0;
        ArchiveFixture::TearDown();
    }

    void givenTwoMailsOfHanako()
    {
        store(mail(u"hanako@example.jp", u"taro@example.jp", u"first", u"20000215", u"101112"));
        store(mail(u"hanako@example.jp", u"taro@example.jp", u"second", u"20000216", u"101112"));
        edSearch_Addr();
        edSearch_Name();
    }
    // Shortcuts need an active window.
    void showActive()
    {
        form.Show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(form.window(), 60000));
    }
    void clickEntry(ListBox& list, int row)
    {
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {},
                          list.visualRect(list.model()->index(row, 0)).center());
        rethrowKept();
    }
    void expectEndBy(const std::function<void()>& action)
    {
        EXPECT_THROW(
            {
                action();
                rethrowKept();
            },
            ProgramEnd);
    }
    Text setting(TextView section, TextView key)
    {
        return getProfileString(section, key, u"none", 255, gIniPath);
    }

    std::vector<Text> helpShown;
    frmTolvekEvents form;
};

DateTime aLateEvening()
{
    return {2001, 2, 3, 22, 5, 9};
}

// ---- start ----

TEST_F(FrmTolvekEventsTest, TheStartLeavesEmptyPanesAndAFreshState)
{
    gStatusColorFlag = 1;
    gBusyFlag = -1;
    gBackUpDisp = 1;
    gUnloading = -1;
    gPostPetPid = 77;
    gNonCopyRuleCnt = 5;
    form.Show();
    EXPECT_EQ(form.txtMail->Text(), u"");
    EXPECT_EQ(form.lblRecCount->Caption(), u"");
    EXPECT_EQ(form.lblHead->Caption(), u"");
    EXPECT_EQ(form.lstSubject->ListCount(), 0);
    for (const int state :
         {int(gStatusColorFlag), int(gBusyFlag), int(gResizeBusy), int(gUnloading),
          int(gBackUpDisp), int(gPostPetPid), int(gNonCopyRuleCnt)})
        EXPECT_EQ(state, 0);
}

TEST_F(FrmTolvekEventsTest, TheStartFillsTheTablesOfMonthsAndMailBoxes)
{
    form.Show();
    EXPECT_EQ(gMonthName[0], u"Jan");
    EXPECT_EQ(gMonthName[8], u"Sep");
    EXPECT_EQ(gMonthName[11], u"Dec");
    EXPECT_EQ(gMonthName[12], u"");
    EXPECT_EQ(gMailBoxTable[8].mail, u"橙色の引出し.ppm");
}

TEST_F(FrmTolvekEventsTest, TheStartListsTheNavigatorAndReadsTheRules)
{
    givenTwoMailsOfHanako();
    addFilter(10, 1, 1, u"title", u"hanako");
    form.Show();
    ASSERT_EQ(form.lstNameOrAddr->ListCount(), 2);
    EXPECT_EQ(form.lstNameOrAddr->List(0), u"hanako@example.jp");
    EXPECT_EQ(gNonCopyRuleCnt, 1);
}

TEST_F(FrmTolvekEventsTest, TheStartTakesTheMailFontFromTheSettings)
{
    writeBytes(file("TOLVEK.ini"), settingsFile("[Mail Font]\r\nMail Text Font Size=14\r\n"
                                                "Mail Text Font Style=1,1\r\n"));
    form.Show();
    EXPECT_EQ(form.txtMail->FontSize(), 14);
    EXPECT_TRUE(form.txtMail->FontBold());
    EXPECT_TRUE(form.txtMail->FontItalic());
}

TEST_F(FrmTolvekEventsTest, AValueThatCantBeReadIsToldAndTheStartGoesOn)
{
    givenTwoMailsOfHanako();
    writeBytes(file("TOLVEK.ini"), "[Mail Font]\r\nMail Text Font Size=large\r\n"
                                   "[PostPet Mail Option]\r\nMy Mail Addr=taro@e.jp\r\n");
    std::vector<Text> titles;
    hooks::setMsgBox([&](const MsgBoxRequest& box) {
        titles.push_back(box.title);
        return MsgAnswer::Ok;
    });
    form.Show();
    ASSERT_FALSE(titles.empty());
    for (const Text& title : titles)
        EXPECT_EQ(title, u"エラーメッセージ (Form_Initialize)");
    EXPECT_EQ(form.lstNameOrAddr->ListCount(), 2);
}

// ---- commands ----

TEST_F(FrmTolvekEventsTest, TheReadButtonAsksForTheBoxes)
{
    form.Show();
    const ModalScript dialog("frmMailReadOpt",
                             [](QWidget& shown) { press(shown, "cmbMail_Cancel"); });
    form.comMailRead->click();
}

TEST_F(FrmTolvekEventsTest, WithABackupOnDisplayTheReadButtonDoesNothing)
{
    int asked = 0;
    converterLibrary().Tolvek_Edit = [&](const Text&, const Text&, const Text&, Int16&, Int16&) {
        ++asked;
    };
    form.Show();
    gBackUpDisp = 1;
    dspEnable(form, false, gBackUpDisp);
    QTest::mouseClick(form.comMailRead, Qt::LeftButton);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(asked, 0);
}

TEST_F(FrmTolvekEventsTest, TheLabelAndTheMenuEntryGoOnToTheNextDisplay)
{
    form.Show();
    QTest::mouseClick(form.lblNameOrAddr, Qt::LeftButton);
    EXPECT_EQ(gDisplayType, 1);
    EXPECT_EQ(form.lblNameOrAddr->Caption(), u"送受信者名　表示");
    form.memNameOrAddr->action().trigger();
    EXPECT_EQ(gDisplayType, 2);
    EXPECT_TRUE(form.comMailRead->HasFocus());
}

TEST_F(FrmTolvekEventsTest, AnEntryOfTheNavigatorListsItsMailsAndShowsTheLast)
{
    givenTwoMailsOfHanako();
    form.Show();
    clickEntry(*form.lstNameOrAddr, 0);
    ASSERT_EQ(form.lstSubject->ListCount(), 2);
    EXPECT_EQ(form.lstSubject->ListIndex(), 1);
    EXPECT_EQ(form.txtMail->Text(), u"本文\r\n");
    EXPECT_NE(form.lblHead->Caption().find(u"second"), Text::npos);
    clickEntry(*form.lstSubject, 0);
    EXPECT_NE(form.lblHead->Caption().find(u"first"), Text::npos);
}

TEST_F(FrmTolvekEventsTest, TheRightButtonOnTheSubjectsOpensTheOptionsAndSelectsNothing)
{
    givenTwoMailsOfHanako();
    form.Show();
    clickEntry(*form.lstNameOrAddr, 0);
    QTest::mouseClick(form.lstSubject->viewport(), Qt::RightButton, {}, QPoint(5, 5));
    EXPECT_TRUE(form.memOption->menu()->isVisible());
    EXPECT_EQ(form.lstSubject->ListIndex(), 1);
    form.memOption->menu()->close();
}

TEST_F(FrmTolvekEventsTest, WhileTheOptionsAreOffTheRightButtonOpensNothing)
{
    form.Show();
    form.memOption->setEnabled(false);
    QTest::mouseClick(form.lstSubject->viewport(), Qt::RightButton, {}, QPoint(5, 5));
    EXPECT_FALSE(form.memOption->menu()->isVisible());
}

TEST_F(FrmTolvekEventsTest, HelpOpensTheHelpFileByMenuAndByF1)
{
    writeBytes(file("Tolvek.hlp"), "help");
    showActive();
    form.memHelp->action().trigger();
    QTest::keyClick(form.window(), Qt::Key_F1);
    const Text help = joinPath(appPath(), u"Tolvek.hlp");
    EXPECT_EQ(helpShown, (std::vector<Text>{help, help}));
}

TEST_F(FrmTolvekEventsTest, WhileTheHelpMenuIsOffF1IsDead)
{
    writeBytes(file("Tolvek.hlp"), "help");
    showActive();
    dspEnable(form, false, 0);
    QTest::keyClick(form.window(), Qt::Key_F1);
    EXPECT_TRUE(helpShown.empty());
    dspEnable(form, true, 0);
    QTest::keyClick(form.window(), Qt::Key_F1);
    EXPECT_EQ(helpShown.size(), 1u);
}

TEST_F(FrmTolvekEventsTest, AMissingHelpFileIsTold)
{
    form.Show();
    boxes.expect(u"ヘルプファイルがありません。\r\n" + joinPath(appPath(), u"Tolvek.hlp"));
    form.memHelp->action().trigger();
}

TEST_F(FrmTolvekEventsTest, TheKeyboardStartsAtTheReadButtonAndWalksThroughListsAndButtons)
{
    givenTwoMailsOfHanako();
    showActive();
    EXPECT_EQ(form.window()->focusWidget(), form.comMailRead);
    const auto key = [&](Qt::Key which) {
        QTest::keyClick(form.window()->focusWidget(), which);
        rethrowKept();
    };
    for (int i = 0; i < 4; ++i)
        key(Qt::Key_Tab);
    ASSERT_TRUE(form.lstNameOrAddr->HasFocus());
    key(Qt::Key_Down);
    EXPECT_EQ(form.lstSubject->ListCount(), 2);
    key(Qt::Key_Down); // the list keeps the focus while its own command runs
    EXPECT_EQ(form.lstNameOrAddr->ListIndex(), 1);
    key(Qt::Key_Tab);
    ASSERT_TRUE(form.lstSubject->HasFocus());
    key(Qt::Key_Up);
    EXPECT_EQ(form.lstSubject->ListIndex(), 0);
    EXPECT_NE(form.lblHead->Caption().find(u"first"), Text::npos);
    key(Qt::Key_Down);
    EXPECT_NE(form.lblHead->Caption().find(u"second"), Text::npos);
    for (int i = 0; i < 3; ++i)
        key(Qt::Key_Tab);
    ASSERT_TRUE(form.comMailRead->HasFocus());
    const ModalScript dialog("frmMailReadOpt",
                             [](QWidget& shown) { QTest::keyClick(&shown, Qt::Key_Escape); });
    key(Qt::Key_Space);
}

// ---- the clock ----

TEST_F(FrmTolvekEventsTest, TheClockShowsDateAndTime)
{
    hooks::setClock(aLateEvening);
    form.Show();
    EXPECT_EQ(form.Timer1->Interval(), 1000);
    emit form.Timer1->Tick();
    EXPECT_EQ(form.lblDate->Caption(), u"2001/02/03  22:05:09");
}

TEST_F(FrmTolvekEventsTest, EachTickOfABusyProgramBlinksTheStatusText)
{
    form.Show();
    setStatusLines(u"one", u"two", u"", u"", u"", u"");
    gBusyFlag = -1;
    const Colour red = 0xFF;
    for (const Colour expected : {kWindowText, red, kWindowText}) {
        emit form.Timer1->Tick();
        EXPECT_EQ(form.txtMail->ForeColor(), expected);
        EXPECT_EQ(form.txtMail->Text(), u"\r\none\r\ntwo\r\n\r\n\r\n\r\n");
    }
}

TEST_F(FrmTolvekEventsTest, ATickOfAnIdleProgramLeavesTheMailAlone)
{
    form.Show();
    form.txtMail->setText(u"a mail");
    emit form.Timer1->Tick();
    EXPECT_EQ(form.txtMail->Text(), u"a mail");
}

TEST_F(FrmTolvekEventsTest, AWindowDraggedSmallerSnapsBack)
{
    form.Show();
    form.window()->resize(300, 200);
    QCoreApplication::processEvents();
    EXPECT_EQ(form.Width(), 11745);
    EXPECT_EQ(form.Height(), 7404);
    EXPECT_EQ(gResizeBusy, 0);
}

// ---- the end ----

TEST_F(FrmTolvekEventsTest, TheEndButtonTheMenuAndTheCloseBoxAllEndTheProgram)
{
    const std::function<void()> ways[] = {
        [&] { form.comEnd->click(); },
        [&] { form.memEnd->action().trigger(); },
        [&] { form.window()->close(); },
    };
    for (const auto& way : ways) {
        gUnloading = 0;
        writeBytes(file("TOLVEK.ini"), settingsFile());
        form.Show();
        expectEndBy(way);
        EXPECT_FALSE(form.Loaded());
        EXPECT_EQ(setting(u"Tolvek Environment", u"Ver"), u"331");
    }
}

TEST_F(FrmTolvekEventsTest, TheEndUnloadsEveryForm)
{
    Form first(u"first"), last(u"last");
    first.Show();
    form.Show();
    last.Show();
    expectEndBy([&] { form.comEnd->click(); });
    EXPECT_EQ(Forms::Count(), 0);
}

TEST_F(FrmTolvekEventsTest, TheEndWritesWhereTheWindowStands)
{
    form.Show();
    form.setLeft(1500);
    form.setTop(750);
    form.setWidth(12000);
    expectEndBy([&] { form.window()->close(); });
    EXPECT_EQ(setting(u"Form Position", u"Form Left   Position"), u"1500");
    EXPECT_EQ(setting(u"Form Position", u"Form Top    Position"), u"750");
    EXPECT_EQ(setting(u"Form Position", u"Form Width  Position"), u"12000");
    EXPECT_EQ(setting(u"Form Position", u"Form Height Position"), u"7404");
}

TEST_F(FrmTolvekEventsTest, AMinimisedWindowKeepsItsLayoutAndLeavesTheFilesPosition)
{
    writeBytes(file("TOLVEK.ini"), settingsFile("[Form Position]\r\nForm Left   Position=300\r\n"));
    form.Show();
    form.setLeft(1500);
    const float before = form.txtMail->Height();
    form.setWindowState(1);
    QCoreApplication::processEvents();
    EXPECT_EQ(form.txtMail->Height(), before);
    expectEndBy([&] { form.comEnd->click(); });
    EXPECT_EQ(setting(u"Form Position", u"Form Left   Position"), u"300");
    EXPECT_EQ(setting(u"Tolvek Environment", u"Ver"), u"331");
}

TEST_F(FrmTolvekEventsTest, TemporaryFilesGoAllOrNone)
{
    struct Case {
        std::vector<std::string> there, left;
    };
    const Case cases[] = {
        {{"a.tmp", "b.TMP"}, {"a.tmp", "b.TMP"}},
        {{"a.tmp", "Tolvek.Tmp"}, {}},
        {{"a.tmp", "Friend.Tmp"}, {}},
        {{"a.tmp", "b.TMP", "Friend.Tmp", "Tolvek.Tmp", "keep.txt"}, {"keep.txt"}},
    };
    for (const Case& c : cases) {
        gUnloading = 0;
        for (const std::string& name : c.there)
            writeBytes(file(name), "x");
        form.Show();
        expectEndBy([&] { form.comEnd->click(); });
        for (const std::string& name : c.there)
            EXPECT_EQ(exists(name), std::find(c.left.begin(), c.left.end(), name) != c.left.end())
                << name;
        for (const std::string& name : c.left)
            removeFile(file(name));
    }
}

TEST_F(FrmTolvekEventsTest, ATemporaryFileThatCantBeDeletedDoesntStopTheExit)
{
    form.Show();
    writeBytes(file("Tolvek.Tmp"), "x");
    hooks::setFileProbe([](FileOperation operation, const Path& path) {
        if (operation == FileOperation::Remove && path.extension() == ".Tmp")
            throw std::system_error(std::make_error_code(std::errc::permission_denied));
    });
    std::vector<Text> titles;
    hooks::setMsgBox([&](const MsgBoxRequest& box) {
        titles.push_back(box.title);
        return MsgAnswer::Ok;
    });
    expectEndBy([&] { form.comEnd->click(); });
    // The unload is entered twice and looks for the files each time.
    const Text failed = u"エラーメッセージ (Form_Unload)";
    EXPECT_EQ(titles, (std::vector<Text>{failed, failed}));
    EXPECT_EQ(setting(u"Tolvek Environment", u"Ver"), u"331");
}

// The end doesn't depend on the settings: a failed write is reported once.
TEST_F(FrmTolvekEventsTest, ASettingsFileThatCantBeWrittenIsToldAndTheProgramEnds)
{
    form.Show();
    std::filesystem::permissions(file("TOLVEK.ini"), std::filesystem::perms::owner_read);
    boxes.expect(gIniPath + u"　書き込みエラー", MsgAnswer::Ok, u"Tolvek");
    expectEndBy([&] { form.window()->close(); });
    EXPECT_EQ(readBytes(file("TOLVEK.ini")), settingsFile());
}

TEST_F(FrmTolvekEventsTest, TheCloseBoxWorksWhileADialogStands)
{
    form.Show();
    expectEndBy([&] {
        const ModalScript dialog("frmMailReadOpt", [&](QWidget&) { form.window()->close(); });
        form.comMailRead->click();
    });
    EXPECT_EQ(Forms::Count(), 0);
    EXPECT_EQ(setting(u"Tolvek Environment", u"Ver"), u"331");
}

TEST_F(FrmTolvekEventsTest, TheCloseBoxWorksWhileAMessageBoxStands)
{
    form.Show();
    hooks::setMsgBox({});
    expectEndBy([&] {
        const ModalScript box("MsgBox", [&](QWidget&) { form.window()->close(); });
        form.memHelp->action().trigger();
    });
    EXPECT_EQ(setting(u"Tolvek Environment", u"Ver"), u"331");
}

}
}
