#include "app/settings.h"
#include "dialogs/frm_option.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/test_hooks.h"
#include "shell/dialog_commands.h"
#include "support/modal_script.h"
#include "support/msg_box_script.h"
#include "support/report_list.h"
#include "support/temp_folder.h"
#include "window/frm_tolvek.h"

#include <QWindow>

namespace tolvek::test {
namespace {

class DialogCommandsOptionTest : public ::testing::Test {
protected:
    DialogCommandsOptionTest()
    {
        std::filesystem::create_directories(folder / "受信フォルダ");
        gPostPetDir = pathText(folder.path());
        gMailTextFont = u"ＭＳ 明朝";
        gMailTextFontSize = 16;
        gMailTextFontStyle = u"1,1";
        form.Show();
        form.txtMail->setFontOf(u"ＭＳ ゴシック", 20);
        form.lstSubject->SetFocus();
        reports.listen();
    }
    ~DialogCommandsOptionTest() override
    {
        EXPECT_EQ(reports.take(), Reports{});
        hooks::setMsgBox({});
        gPostPetDir.clear();
    }
    // Runs the command and closes its dialog by this button.
    void runAndPress(const char* button)
    {
        const ModalScript dialog("frmOption", [&](QWidget& shown) { press(shown, button); });
        memEnv_Click(form);
    }
    void expectFont(TextView name, float size, bool bold, bool italic) const
    {
        EXPECT_EQ(form.txtMail->FontName(), name);
        EXPECT_EQ(form.txtMail->FontSize(), size);
        EXPECT_EQ(form.txtMail->FontBold(), bold);
        EXPECT_EQ(form.txtMail->FontItalic(), italic);
    }

    TempFolder folder;
    ReportList reports;
    frmTolvek form;
};

TEST_F(DialogCommandsOptionTest, TheFontIsAppliedAfterOkAndAfterCancel)
{
    for (const char* button : {"cmbOK", "cmbCancel"}) {
        form.txtMail->setFontOf(u"ＭＳ ゴシック", 20);
        runAndPress(button);
        expectFont(u"ＭＳ 明朝", 16, true, true);
    }
}

TEST_F(DialogCommandsOptionTest, TheFocusGoesToTheReadingButton)
{
    runAndPress("cmbCancel");
    EXPECT_TRUE(form.comMailRead->HasFocus());
}

TEST_F(DialogCommandsOptionTest, TheDialogStandsOverTheMainWindow)
{
    const ModalScript dialog("frmOption", [&](QWidget& shown) {
        EXPECT_EQ(shown.windowHandle()->transientParent(), form.window()->windowHandle());
        press(shown, "cmbCancel");
    });
    memEnv_Click(form);
}

TEST_F(DialogCommandsOptionTest, AFlagThatIsNoNumberIsToldAndTheOthersAreApplied)
{
    gMailTextFontStyle = u"1,x";
    runAndPress("cmbCancel");
    EXPECT_EQ(reports.take(), Reports{"memEnv_Click 13"});
    expectFont(u"ＭＳ 明朝", 16, false, true);
    EXPECT_TRUE(form.comMailRead->HasFocus());
}

TEST_F(DialogCommandsOptionTest, OfTheStyleTheFirstAndTheThirdCharacterCountAlone)
{
    gMailTextFontStyle = u"0x09";
    runAndPress("cmbCancel");
    expectFont(u"ＭＳ 明朝", 16, false, false);
}

TEST_F(DialogCommandsOptionTest, AnEmptyStyleIsToldOnceForEachFlag)
{
    gMailTextFontStyle.clear();
    runAndPress("cmbOK");
    EXPECT_EQ(reports.take(), (Reports{"memEnv_Click 13", "memEnv_Click 13"}));
    expectFont(u"ＭＳ 明朝", 16, false, false);
}

class DialogCommandsAboutTest : public ::testing::Test {
protected:
    ~DialogCommandsAboutTest() override { setBeforeWait({}); }

    frmTolvek form;
    MsgBoxScript boxes;
};

TEST_F(DialogCommandsAboutTest, ShowsItModallyAboveTheMainWindow)
{
    form.Show();
    for (int opening = 0; opening < 2; ++opening) {
        const ModalScript script("frmAbout", [&](QWidget& shown) {
            EXPECT_EQ(shown.windowModality(), Qt::ApplicationModal);
            EXPECT_EQ(shown.windowHandle()->transientParent(), form.window()->windowHandle());
            press(shown, "cmdOK");
        });
        memVar_Click(form);
        EXPECT_EQ(Forms::Count(), 1) << "the main window alone";
    }
}

TEST_F(DialogCommandsAboutTest, AFailureIsReportedUnderItsName)
{
    setBeforeWait([] {
        setBeforeWait({}); // the report is a wait too
        throw RuntimeError(7, u"メモリが不足しています。", nullptr);
    });
    boxes.expect(u"エラー番号： 7\r（メモリが不足しています。）", MsgAnswer::Ok,
                 u"エラーメッセージ (memVar_Click)");
    memVar_Click(form);
    EXPECT_EQ(Forms::Count(), 0);
}

}
}
