#include "app/guard.h"
#include "app/settings.h"
#include "app/state.h"
#include "platform/runtime/do_events.h"
#include "support/archive_fixture.h"
#include "support/painted.h"
#include "support/report_list.h"
#include "support/yield_watch.h"
#include "window/frm_tolvek.h"
#include "window/status.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMenuBar>

namespace tolvek::test {
namespace {

class FrmTolvekTest : public ArchiveFixture {
protected:
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        gMailTextFontSize = 10;
        gMailTextFont = u"ＭＳ ゴシック";
        gMailTextFontStyle = u"0,0";
        gStatusColorFlag = 0;
        gResizeBusy = 0;
        form.Show();
        DoEventsNow();
    }

    // Posts a click to the event queue, as the window system does.
    static void postClick(QWidget& target)
    {
        const QPointF middle = target.rect().center();
        const QPointF global = target.mapToGlobal(middle);
        for (auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease})
            QApplication::postEvent(&target, new QMouseEvent(type, middle, global, Qt::LeftButton,
                                                             type == QEvent::MouseButtonPress
                                                                 ? Qt::MouseButtons(Qt::LeftButton)
                                                                 : Qt::MouseButtons(),
                                                             {}));
    }

    void expectGeometry(const Control& control, float left, float top, float width, float height)
    {
        EXPECT_FLOAT_EQ(control.Left(), left) << toUtf8(control.Name());
        EXPECT_FLOAT_EQ(control.Top(), top) << toUtf8(control.Name());
        EXPECT_FLOAT_EQ(control.Width(), width) << toUtf8(control.Name());
        EXPECT_FLOAT_EQ(control.Height(), height) << toUtf8(control.Name());
    }

    ReportList reports;
    frmTolvek form;
};

TEST_F(FrmTolvekTest, TheLayoutAtTheLeastSize)
{
    EXPECT_EQ(form.Width(), 11745);
    EXPECT_EQ(form.Height(), 7404);
    expectGeometry(*form.lstNameOrAddr, 0, 744, 2936.25F, 6012);
    expectGeometry(*form.lstSubject, 2986.25F, 480, 8628.75F, 1480.8F);
    expectGeometry(*form.lblHead, 3286.25F, 2020.8F, 8328.75F, 615);
    expectGeometry(*form.txtMail, 2986.25F, 2625.8F, 8628.75F, 4150.2F);
    expectGeometry(*form.lblDate, 9460, 120, 2235, 195);
    expectGeometry(*form.lblRecCount, 6215, 120, 3045, 315);
    expectGeometry(*form.lblNameOrAddr, 0, 480, 2936.25F, 312);
    EXPECT_FLOAT_EQ(form.Line1->Y1(), 3);
    EXPECT_FLOAT_EQ(form.Line1->Y2(), 3);
    EXPECT_FLOAT_EQ(form.Line1->X1(), 0);
    EXPECT_FLOAT_EQ(form.Line1->X2(), 11745);
}

TEST_F(FrmTolvekTest, TheLayoutFollowsALargerWindowAndTheButtonsStay)
{
    form.setWidth(15000);
    form.setHeight(10000);
    EXPECT_FLOAT_EQ(form.lstNameOrAddr->Width(), 3750);
    EXPECT_FLOAT_EQ(form.lstSubject->Width(), 15000 - 3750 - 180);
    EXPECT_FLOAT_EQ(form.lstSubject->Height(), 2000);
    EXPECT_FLOAT_EQ(form.lstNameOrAddr->Top(), 744);
    // The list ends 20 twips above the mail pane, wherever that is.
    EXPECT_NEAR(form.txtMail->Top() + form.txtMail->Height() -
                    (form.lstNameOrAddr->Top() + form.lstNameOrAddr->Height()),
                20, 0.01);
    expectGeometry(*form.comMailRead, 60, 90, 1545, 312);
    expectGeometry(*form.comEnd, 5460, 90, 885, 312);
}

TEST_F(FrmTolvekTest, AWindowDraggedTooSmallSnapsBack)
{
    form.setWidth(6000);
    form.setHeight(3000);
    EXPECT_EQ(form.Width(), 11745);
    EXPECT_EQ(form.Height(), 7404);
    EXPECT_EQ(gResizeBusy, 0);
    expectGeometry(*form.lstNameOrAddr, 0, 744, 2936.25F, 6012);
}

TEST_F(FrmTolvekTest, TheRuleFallsThroughWhileItRuns)
{
    gResizeBusy = -1;
    form.setWidth(20000);
    EXPECT_FLOAT_EQ(form.lstNameOrAddr->Width(), 2936.25F);
    gResizeBusy = 0;
}

TEST_F(FrmTolvekTest, AMinimisedWindowKeepsItsLastLayout)
{
    form.setWindowState(1);
    DoEventsNow();
    form.setWidth(20000);
    EXPECT_FLOAT_EQ(form.lstNameOrAddr->Width(), 2936.25F);
    form.setWindowState(0);
}

TEST_F(FrmTolvekTest, ButtonsAndListsLieAboveLabels)
{
    const QObjectList& order = form.client().children();
    for (const Control* label :
         {static_cast<Control*>(form.lblRecCount), static_cast<Control*>(form.lblNameOrAddr)})
        for (const Control* above :
             {static_cast<Control*>(form.comEnd), static_cast<Control*>(form.lstNameOrAddr)})
            EXPECT_LT(order.indexOf(&label->widget()), order.indexOf(&above->widget()));
    EXPECT_TRUE(form.lblRecCount->testAttribute(Qt::WA_TransparentForMouseEvents));
}

TEST_F(FrmTolvekTest, TabGoesThroughTheControlsInTheirOrder)
{
    form.comMailRead->SetFocus();
    for (Control* next : std::initializer_list<Control*>{
             form.cmdAddrDel, form.comMailDel, form.comEnd, form.lstNameOrAddr, form.lstSubject,
             form.txtMail, form.comSendMail, form.comMailRead}) {
        QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
        QApplication::sendEvent(QApplication::focusWidget(), &tab);
        EXPECT_TRUE(next->HasFocus()) << toUtf8(next->Name());
    }
}

TEST_F(FrmTolvekTest, CaptionsAndToolTipsStandAsTold)
{
    EXPECT_EQ(form.Caption(), u"PostPet Mail 表示");
    EXPECT_EQ(form.comMailRead->Caption(), u"PostPet Mail Read");
    EXPECT_EQ(form.comMailRead->ToolTipText(), u"PostPetからメールを読み込みます");
    EXPECT_EQ(form.cmdAddrDel->Caption(), u"アドレス　削　除");
    EXPECT_EQ(form.comSendMail->ToolTipText(), u"PostPetで返信メールが書けます");
    EXPECT_EQ(form.lblRecCount->Caption(), u"表示件数　：　9999 / 9999件");
    EXPECT_EQ(form.memFriend_A->Caption(), u"ﾒｰﾙｱﾄﾞﾚｽ順");
    EXPECT_EQ(form.menuBar().actions().size(), 4);
    EXPECT_EQ(form.Timer1->Interval(), 1000);
}

TEST_F(FrmTolvekTest, ALongCommandLeavesOnlyTheDatabaseEntryOn)
{
    dspEnable(form, false, 0);
    for (Control* off : std::initializer_list<Control*>{
             form.comEnd, form.comMailRead, form.cmdAddrDel, form.comMailDel, form.comSendMail,
             form.lstSubject, form.lstNameOrAddr, form.lblNameOrAddr})
        EXPECT_FALSE(off->Enabled()) << toUtf8(off->Name());
    for (MenuEntry* off :
         {form.memFile, form.memOption, form.memHelp_Top, form.memBackUp, form.memBackUp_FileEdit})
        EXPECT_FALSE(off->Enabled()) << toUtf8(off->Name());
    EXPECT_TRUE(form.memDBSupport->Enabled());
    EXPECT_TRUE(form.txtMail->Enabled());
}

TEST_F(FrmTolvekTest, ABackupOnDisplayTurnsOffWhatChangesTheStoreAndNothingElse)
{
    dspEnable(form, false, 1);
    for (Control* off :
         std::initializer_list<Control*>{form.comMailRead, form.cmdAddrDel, form.comMailDel})
        EXPECT_FALSE(off->Enabled()) << toUtf8(off->Name());
    for (MenuEntry* off : {form.memDBSupport, form.memOption, form.memBackUp_FileEdit})
        EXPECT_FALSE(off->Enabled()) << toUtf8(off->Name());
    for (Control* on :
         std::initializer_list<Control*>{form.comEnd, form.comSendMail, form.lstSubject,
                                         form.lstNameOrAddr, form.lblNameOrAddr})
        EXPECT_TRUE(on->Enabled()) << toUtf8(on->Name());
    for (MenuEntry* on : {form.memFile, form.memBackUp, form.memHelp_Top})
        EXPECT_TRUE(on->Enabled()) << toUtf8(on->Name());
}

TEST_F(FrmTolvekTest, EnablingTurnsEverythingOnEvenInBackupMode)
{
    for (int mode : {0, 1}) {
        dspEnable(form, false, 0);
        dspEnable(form, true, mode);
        EXPECT_TRUE(form.comMailRead->Enabled());
        EXPECT_TRUE(form.memOption->Enabled());
        EXPECT_TRUE(form.memDBSupport->Enabled());
        EXPECT_TRUE(form.lstSubject->Enabled());
    }
}

TEST_F(FrmTolvekTest, HelpHasItsKey)
{
    EXPECT_EQ(form.memHelp->action().shortcut(), QKeySequence(Qt::Key_F1));
}

TEST_F(FrmTolvekTest, ADisabledControlKeepsItsFocusDuringACommand)
{
    form.lstSubject->SetFocus();
    dspEnable(form, false, 0);
    EXPECT_FALSE(form.lstSubject->Enabled());
    EXPECT_TRUE(form.lstSubject->HasFocus());
    dspEnable(form, true, 0);
    EXPECT_TRUE(form.lstSubject->HasFocus());
}

TEST_F(FrmTolvekTest, AControlThatStaysDisabledAfterACommandGivesItsFocusAway)
{
    form.comMailRead->SetFocus();
    dspEnable(form, false, 0);
    dspEnable(form, false, 1);
    EXPECT_FALSE(form.comMailRead->Enabled());
    EXPECT_TRUE(form.ActiveControl()->Enabled());
}

TEST_F(FrmTolvekTest, AClickMadeWhileCommandsAreOffPressesNothing)
{
    bool pressed = false;
    QObject::connect(form.comMailRead, &CommandButton::Click, [&] { pressed = true; });
    dspEnable(form, false, 0);
    postClick(*form.comMailRead);
    dspEnable(form, true, 0);
    EXPECT_FALSE(pressed);
}

// The second click of a double click must not run a command inside the first's.
TEST_F(FrmTolvekTest, AClickThatWaitsWhenALongCommandBeginsPressesNothing)
{
    bool pressed = false;
    QObject::connect(form.comMailRead, &CommandButton::Click, [&] { pressed = true; });
    postClick(*form.comMailRead);
    dspEnable(form, false, 0);
    dspEnable(form, true, 0);
    DoEventsNow();
    EXPECT_FALSE(pressed);
}

TEST_F(FrmTolvekTest, TheStatusTextBlinksBetweenTwoColoursAndBeginsWithAnEmptyLine)
{
    setStatusLines(u"一", u"二", u"", u"四", u"", u"六");
    dspStatus(form, true, gStatusLines);
    EXPECT_EQ(form.txtMail->Text(), u"\r\n一\r\n二\r\n\r\n四\r\n\r\n六");
    EXPECT_EQ(form.txtMail->FontSize(), 20);
    EXPECT_EQ(form.txtMail->ForeColor(), kWindowText);
    EXPECT_EQ(gStatusColorFlag, 1);
    dspStatus(form, true, gStatusLines);
    EXPECT_EQ(form.txtMail->ForeColor(), 0x000000FF);
    EXPECT_EQ(gStatusColorFlag, 0);
}

// Seconds of work without a yield may follow. The second call finds the screen just
// painted, like a command that has shown a box.
TEST_F(FrmTolvekTest, TheStatusTextIsPaintedBeforeTheNextStatementRuns)
{
    setStatusLines(u"一二三", u"", u"", u"", u"", u"");
    for (const QColor& colour : {QColor(Qt::black), QColor(Qt::red), QColor(Qt::black)}) {
        dspStatus(form, true, gStatusLines);
        EXPECT_TRUE(isInkedIn(colour, painted(*form.txtMail->viewport())));
    }
    dspStatus(form, false, gStatusLines);
    EXPECT_FALSE(isInkedIn(Qt::black, painted(*form.txtMail->viewport())));
}

TEST_F(FrmTolvekTest, TheEndOfTheStatusTextGivesThePaneBack)
{
    setStatusLines(u"一", u"", u"", u"", u"", u"");
    dspStatus(form, true, gStatusLines);
    dspStatus(form, false, gStatusLines);
    EXPECT_EQ(form.txtMail->Text(), u"");
    EXPECT_EQ(form.txtMail->FontSize(), 10);
    EXPECT_EQ(form.txtMail->ForeColor(), kWindowText);
    EXPECT_EQ(gStatusLines[0], u"");
    EXPECT_EQ(gStatusColorFlag, 1); // the colour flag continues from one command to the next
}

// The text must be visible before the work that it announces.
TEST_F(FrmTolvekTest, TheStatusTextYieldsWhenItComesAndWhenItGoes)
{
    setStatusLines(u"一", u"", u"", u"", u"", u"");
    for (const bool show : {true, false}) {
        Text shown = u"never";
        const YieldWatch yields([&] { shown = form.txtMail->Text(); });
        dspStatus(form, show, gStatusLines);
        EXPECT_EQ(yields.count(), 1);
        EXPECT_EQ(shown, show ? TextView(u"\r\n一\r\n\r\n\r\n\r\n\r\n") : TextView());
    }
}

TEST_F(FrmTolvekTest, TheMailFontTakesItsStyleFromTwoFlags)
{
    const struct {
        const char16_t* style;
        bool bold, italic;
    } cases[] = {
        {u"0,0", false, false}, {u"0,1", true, false}, {u"1,0", false, true}, {u"1,1", true, true}};
    const ResumeNext on{u"Form_Initialize"};
    for (const FlagText flag : {FlagText::WithComma, FlagText::Alone})
        for (const auto& c : cases) {
            gMailTextFontStyle = c.style;
            applyMailFont(form, on, flag);
            EXPECT_EQ(form.txtMail->FontBold(), c.bold) << toUtf8(c.style);
            EXPECT_EQ(form.txtMail->FontItalic(), c.italic) << toUtf8(c.style);
        }
    EXPECT_EQ(form.txtMail->FontName(), u"ＭＳ ゴシック");
}

// The character after the bold flag counts only at start-up.
TEST_F(FrmTolvekTest, AFlagIsReadWithOrWithoutTheCharacterBehindIt)
{
    gMailTextFontStyle = u"0,05";
    const ResumeNext on{u"Form_Initialize"};
    applyMailFont(form, on, FlagText::WithComma);
    EXPECT_TRUE(form.txtMail->FontBold());
    applyMailFont(form, on, FlagText::Alone);
    EXPECT_FALSE(form.txtMail->FontBold());
}

TEST_F(FrmTolvekTest, AnEmptyStyleIsToldForEachFlagAndFaceAndSizeAreSet)
{
    gMailTextFontStyle.clear();
    gMailTextFont = u"ＭＳ 明朝";
    gMailTextFontSize = 14;
    const ResumeNext on{u"Form_Initialize"};
    reports.listen();
    applyMailFont(form, on, FlagText::WithComma);
    EXPECT_EQ(reports.take(), (Reports{"Form_Initialize 13", "Form_Initialize 13"}));
    EXPECT_EQ(form.txtMail->FontSize(), 14);
    EXPECT_EQ(form.txtMail->FontName(), u"ＭＳ 明朝");
}

TEST_F(FrmTolvekTest, AFlagThatIsNoNumberDoesntKeepTheOtherFromBeingSet)
{
    gMailTextFontStyle = u"1,x";
    const ResumeNext on{u"memEnv_Click"};
    reports.listen();
    applyMailFont(form, on, FlagText::Alone);
    EXPECT_EQ(reports.take(), Reports{"memEnv_Click 13"});
    EXPECT_TRUE(form.txtMail->FontItalic());
    EXPECT_FALSE(form.txtMail->FontBold());
}

}
}
