#include "dialogs/frm_about.h"
#include "platform/forms/screen.h"
#include "platform/runtime/runtime_error.h"
#include "platform/system/registry.h"
#include "platform/system/test_hooks.h"
#include "support/modal_script.h"
#include "support/msg_box_script.h"
#include "support/screen_driver.h"
#include "support/temp_folder.h"

#include <QWindow>

namespace tolvek::test {
namespace {

const TextView kNoInformation = u"現時点ではｼｽﾃﾑ情報を使用できません";

class FrmAboutTest : public ::testing::Test {
protected:
    void SetUp() override { hooks::clearRegistry(); }
    void TearDown() override { hooks::resetRegistry(); }

    // Shows the dialog, runs the steps while it is shown, and closes it if it is still
    // open.
    void atDialog(const std::function<void()>& steps)
    {
        const ModalScript script("frmAbout", [&](QWidget&) {
            steps();
            dialog.Unload();
        });
        dialog.ShowModal();
        EXPECT_FALSE(dialog.Loaded());
    }

    MsgBoxScript boxes;
    frmAbout dialog;
};

TEST_F(FrmAboutTest, ShowsTheVersionAndWhatTheProgramIs)
{
    atDialog([&] {
        EXPECT_EQ(dialog.Caption(), u"ﾊﾞｰｼﾞｮﾝ情報");
        EXPECT_EQ(dialog.lblVersion->Caption(), u"Version 3.3.1");
        EXPECT_EQ(dialog.lblDescription->Caption(),
                  u"ｱﾌﾟﾘｹｰｼｮﾝの説明\r\n\r\n   Tolvek　は　ＰｏｓｔＰｅｔ 2001のメールを"
                  u"ＤＢにＳａｖｅする為のプログラムです。");
        EXPECT_EQ(dialog.lblDisclaimer->Caption(), u"警告: ...");
        EXPECT_EQ(dialog.cmdOK->Caption(), u"OK");
        EXPECT_EQ(dialog.cmdSysInfo->Caption(), u"ｼｽﾃﾑ情報(&S)...");
    });
}

TEST_F(FrmAboutTest, TwoRulesLieAcrossTheForm)
{
    atDialog([&] {
        EXPECT_EQ(dialog.Line1.size(), 2);
        const float heights[] = {1572, 1560};
        for (int i = 0; i < 2; ++i) {
            EXPECT_EQ(dialog.Line1[i]->Y1(), heights[i]);
            EXPECT_EQ(dialog.Line1[i]->Y2(), heights[i]);
            EXPECT_LE(dialog.Line1[i]->geometry().left(), 0);
            EXPECT_GE(dialog.Line1[i]->geometry().right(), dialog.client().rect().right());
        }
        EXPECT_EQ(dialog.Line1[0]->y(), dialog.Line1[1]->y() + 1) << "one cut, of two pixels";
    });
}

TEST_F(FrmAboutTest, OkClosesIt)
{
    const ModalScript script("frmAbout", [&](QWidget&) { dialog.cmdOK->click(); });
    dialog.ShowModal();
    EXPECT_FALSE(dialog.Loaded());
}

TEST_F(FrmAboutTest, EnterAndEscapePressOk)
{
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
        const ModalScript script("frmAbout", [&](QWidget& shown) { test::key(shown, key); });
        dialog.ShowModal();
        EXPECT_FALSE(dialog.Loaded());
    }
}

TEST_F(FrmAboutTest, OkHasTheFocusAndTabLeadsToTheInformation)
{
    atDialog([&] {
        ASSERT_TRUE(QTest::qWaitForWindowActive(dialog.window(), 60000));
        EXPECT_EQ(dialog.ActiveControl(), dialog.cmdOK);
        EXPECT_EQ(dialog.cmdOK->nextInFocusChain(), dialog.cmdSysInfo);
    });
}

TEST_F(FrmAboutTest, WithoutBothKeysTheMessageComesAndTheDialogStays)
{
    atDialog([&] {
        boxes.expect(kNoInformation, MsgAnswer::Ok, u"Tolvek");
        dialog.cmdSysInfo->click();
        EXPECT_EQ(boxes.pending(), 0u);
        EXPECT_TRUE(dialog.Visible());
    });
}

TEST_F(FrmAboutTest, WithAToolThatIsGoneTheMessageComesAndTheDialogStays)
{
    const TempFolder folder;
    hooks::setRegistryValue(HKEY_LOCAL_MACHINE, "SOFTWARE\\Microsoft\\Shared Tools Location",
                            "MSINFO", kRegistryString, folder.path().string() + '\0');
    atDialog([&] {
        boxes.expect(kNoInformation, MsgAnswer::Ok, u"Tolvek");
        dialog.cmdSysInfo->click();
        EXPECT_EQ(boxes.pending(), 0u);
        EXPECT_TRUE(dialog.Visible());
    });
}

// Keys too: Enter on the button starts the tool and doesn't press OK.
TEST_F(FrmAboutTest, EnterOnTheInformationButtonIsItsOwn)
{
    atDialog([&] {
        dialog.cmdSysInfo->SetFocus();
        boxes.expect(kNoInformation);
        key(*dialog.cmdSysInfo, Qt::Key_Return);
        EXPECT_TRUE(dialog.Visible());
    });
}

TEST_F(FrmAboutTest, ItsTextsFitAndNothingOverlaps)
{
    atDialog([&] {
        for (const Label* label : {dialog.lblVersion, dialog.lblDescription, dialog.lblDisclaimer})
            EXPECT_GE(label->height(), label->heightForWidth(label->width()))
                << toUtf8(label->Name());
        EXPECT_GE(dialog.lblVersion->width(), dialog.lblVersion->sizeHint().width());
        EXPECT_LT(dialog.lblVersion->geometry().bottom(), dialog.lblDescription->y());
        EXPECT_LT(dialog.lblDescription->geometry().bottom(), dialog.Line1[1]->y());
        EXPECT_GT(dialog.lblDisclaimer->y(), dialog.Line1[0]->geometry().bottom());
        EXPECT_LT(dialog.lblDisclaimer->geometry().right(), dialog.cmdOK->x());
        for (const CommandButton* button : {dialog.cmdOK, dialog.cmdSysInfo})
            EXPECT_TRUE(dialog.client().rect().contains(button->geometry()));
    });
}

}
}
