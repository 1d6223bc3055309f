#include "app/settings.h"
#include "app/state.h"
#include "dialogs/frm_mail_read_opt.h"
#include "platform/forms/screen.h"
#include "support/modal_script.h"
#include "support/msg_box_script.h"

#include <QTest>

#include <vector>

namespace tolvek::test {
namespace {

const TextView kNothingTicked = u"最低１ヶ所には、チェックを付けて下さい。";

class FrmMailReadOptTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        gSendMailReadOption = {};
        gRecievMailReadOption = {};
        gPostPetDir = u"/home/taro/PostPet";
        gMailReadCancel = 7;
    }

    // Shows the dialog and runs the steps while it is shown.
    void atDialog(const std::function<void()>& steps)
    {
        const ModalScript script("frmMailReadOpt", [&](QWidget&) { steps(); });
        dialog.ShowModal();
        EXPECT_FALSE(dialog.Loaded());
    }
    void ok() { dialog.cmbMail_Ok->click(); }
    void cancel() { dialog.cmbMail_Cancel->click(); }

    std::vector<CheckBox*> allBoxes() const
    {
        std::vector<CheckBox*> all(dialog.Chk_Send_Opt.begin(), dialog.Chk_Send_Opt.end());
        all.insert(all.end(), dialog.Chk_Reciev_Opt.begin(), dialog.Chk_Reciev_Opt.end());
        return all;
    }

    MsgBoxScript boxes;
    frmMailReadOpt dialog;
};

TEST_F(FrmMailReadOptTest, TheFirstStartShowsAllFourteenBoxesEmpty)
{
    atDialog([&] {
        EXPECT_EQ(allBoxes().size(), 14u);
        for (const CheckBox* box : allBoxes()) {
            EXPECT_EQ(box->Value(), 0);
            EXPECT_FALSE(box->isChecked());
        }
        cancel();
    });
}

TEST_F(FrmMailReadOptTest, OkWithNothingTickedTellsSoAndStays)
{
    gSendMailReadOption[1] = 1;
    boxes.expect(kNothingTicked, MsgAnswer::Ok, u"Tolvek");
    atDialog([&] {
        dialog.Chk_Send_Opt[1]->click();
        ok();
        EXPECT_TRUE(dialog.Visible());
        EXPECT_EQ(gSendMailReadOption[1], 1) << "nothing is stored";
        EXPECT_EQ(gMailReadCancel, 7);
        cancel();
    });
}

TEST_F(FrmMailReadOptTest, EachBoxGoesToItsOwnElement)
{
    for (int ticked = 0; ticked < 14; ++ticked) {
        SetUp();
        atDialog([&] {
            allBoxes()[static_cast<std::size_t>(ticked)]->click();
            ok();
        });
        EXPECT_EQ(gMailReadCancel, 0);
        for (int i = 0; i < 17; ++i) {
            EXPECT_EQ(gSendMailReadOption[i], i == ticked ? int(ticked < 4) : 0);
            EXPECT_EQ(gRecievMailReadOption[i], i == ticked - 4 ? 1 : 0);
        }
    }
}

TEST_F(FrmMailReadOptTest, AnyValueOfASettingsFileReachesItsBoxAndComesBack)
{
    gSendMailReadOption[2] = 9;
    gRecievMailReadOption[5] = 2;
    atDialog([&] {
        EXPECT_EQ(dialog.Chk_Send_Opt[2]->Value(), 9);
        EXPECT_EQ(dialog.Chk_Reciev_Opt[5]->Value(), 2);
        EXPECT_TRUE(dialog.Chk_Reciev_Opt[5]->isChecked()) << "anything but 0 is shown as set";
        ok();
    });
    EXPECT_EQ(gSendMailReadOption[2], 9);
    EXPECT_EQ(gRecievMailReadOption[5], 2);
}

TEST_F(FrmMailReadOptTest, AClickOnSuchABoxClearsItAndTheNextSetsItToOne)
{
    gRecievMailReadOption[5] = 2;
    atDialog([&] {
        dialog.Chk_Reciev_Opt[5]->click();
        EXPECT_EQ(dialog.Chk_Reciev_Opt[5]->Value(), 0);
        dialog.Chk_Reciev_Opt[5]->click();
        ok();
    });
    EXPECT_EQ(gRecievMailReadOption[5], 1);
}

TEST_F(FrmMailReadOptTest, ElementsWithoutABoxAreCarriedAlong)
{
    gSendMailReadOption[4] = 3;
    gSendMailReadOption[15] = 9;
    gRecievMailReadOption[10] = 1;
    gRecievMailReadOption[16] = 4;
    atDialog([&] {
        dialog.Chk_Send_Opt[0]->click();
        ok();
    });
    EXPECT_EQ(gSendMailReadOption[4], 3);
    EXPECT_EQ(gSendMailReadOption[15], 9);
    EXPECT_EQ(gRecievMailReadOption[10], 1);
    EXPECT_EQ(gRecievMailReadOption[16], 4);
}

TEST_F(FrmMailReadOptTest, AfterCancelTheNextOpeningShowsTheOldTicks)
{
    gRecievMailReadOption[3] = 1;
    atDialog([&] {
        dialog.Chk_Reciev_Opt[3]->click();
        dialog.Chk_Send_Opt[0]->click();
        cancel();
    });
    EXPECT_EQ(gMailReadCancel, -1);
    atDialog([&] {
        EXPECT_EQ(dialog.Chk_Reciev_Opt[3]->Value(), 1);
        EXPECT_EQ(dialog.Chk_Send_Opt[0]->Value(), 0);
        cancel();
    });
}

TEST_F(FrmMailReadOptTest, EscapeIsACancel)
{
    gSendMailReadOption[0] = 1;
    atDialog([&] {
        dialog.Chk_Send_Opt[0]->click();
        QTest::keyClick(dialog.window(), Qt::Key_Escape);
    });
    EXPECT_EQ(gMailReadCancel, -1);
    EXPECT_EQ(gSendMailReadOption[0], 1);
}

TEST_F(FrmMailReadOptTest, TheCloseBoxIsACancel)
{
    gSendMailReadOption[0] = 1;
    atDialog([&] { dialog.window()->close(); });
    EXPECT_EQ(gMailReadCancel, -1);
}

TEST_F(FrmMailReadOptTest, EnterIsOk)
{
    gSendMailReadOption[0] = 1;
    atDialog([&] { QTest::keyClick(dialog.Chk_Send_Opt[0], Qt::Key_Return); });
    EXPECT_EQ(gMailReadCancel, 0);
}

TEST_F(FrmMailReadOptTest, EnterOnTheCancelButtonIsCancel)
{
    gSendMailReadOption[0] = 1;
    atDialog([&] {
        dialog.cmbMail_Cancel->SetFocus();
        QTest::keyClick(dialog.cmbMail_Cancel, Qt::Key_Return);
    });
    EXPECT_EQ(gMailReadCancel, -1);
}

TEST_F(FrmMailReadOptTest, TheWordsOnTheScreen)
{
    const Text drawers[] = {u"ピンクの引出し", u"黄色の引出し", u"紫の引出し",
                            u"緑色の引出し",   u"黒の引出し",   u"水色の引出し",
                            u"赤の引出し",     u"茶色の引出し", u"橙色の引出し"};
    atDialog([&] {
        EXPECT_EQ(dialog.Caption(), u"ＰｏｓｔＰｅｔ フォルダー");
        EXPECT_EQ(dialog.Frame2->Caption(), u"送信メール");
        EXPECT_EQ(dialog.Frame1->Caption(), u"受信メール");
        EXPECT_EQ(dialog.cmbMail_Ok->Caption(), u"O K");
        EXPECT_EQ(dialog.cmbMail_Cancel->Caption(), u"Cancel");
        EXPECT_EQ(dialog.lblPostPetFlder->Caption(),
                  u"PostPet 参照フォルダー : /home/taro/PostPet");
        EXPECT_EQ(dialog.Chk_Send_Opt[0]->Caption(), u"送信メール");
        EXPECT_EQ(dialog.Chk_Reciev_Opt[0]->Caption(), u"受信メール");
        for (int i = 1; i < 10; ++i)
            EXPECT_EQ(dialog.Chk_Reciev_Opt[i]->Caption(), drawers[i - 1]);
        for (int i = 1; i < 4; ++i)
            EXPECT_EQ(dialog.Chk_Send_Opt[i]->Caption(), drawers[i - 1]);
        cancel();
    });
}

TEST_F(FrmMailReadOptTest, StandsInTheMiddleOfTheScreen)
{
    atDialog([&] {
        EXPECT_NEAR(dialog.Left(), (Screen::Width() - dialog.Width()) / 2, 1);
        EXPECT_NEAR(dialog.Top(), (Screen::Height() - dialog.Height()) / 2, 1);
        cancel();
    });
}

TEST_F(FrmMailReadOptTest, EveryControlLiesInsideItsContainerAndShowsItsWholeCaption)
{
    atDialog([&] {
        for (CheckBox* box : allBoxes()) {
            EXPECT_TRUE(box->parentWidget()->rect().contains(box->geometry()));
            EXPECT_GE(box->width(), box->sizeHint().width()) << toUtf8(box->Caption());
            EXPECT_GE(box->height(), box->sizeHint().height()) << toUtf8(box->Caption());
        }
        const QWidget* const parts[] = {dialog.lblPostPetFlder, dialog.Frame1, dialog.Frame2,
                                        dialog.cmbMail_Ok, dialog.cmbMail_Cancel};
        for (const QWidget* part : parts) {
            EXPECT_TRUE(dialog.client().rect().contains(part->geometry()));
            for (const QWidget* other : parts)
                EXPECT_TRUE(part == other || !part->geometry().intersects(other->geometry()));
        }
        cancel();
    });
}

TEST_F(FrmMailReadOptTest, TabGoesThroughTheSendSideTheReceiveSideAndTheButtons)
{
    atDialog([&] {
        std::vector<QWidget*> expected;
        for (CheckBox* box : allBoxes())
            expected.push_back(box);
        expected.push_back(dialog.cmbMail_Ok);
        expected.push_back(dialog.cmbMail_Cancel);
        expected.front()->setFocus();
        for (QWidget* next : expected) {
            EXPECT_EQ(dialog.window()->focusWidget(), next) << next->objectName().toStdString();
            QTest::keyClick(dialog.window()->focusWidget(), Qt::Key_Tab);
        }
        cancel();
    });
}

TEST_F(FrmMailReadOptTest, ALongFolderTakesTwoLines)
{
    gPostPetDir =
        u"/home/taro/わたしのたいせつなメール/むかしのパソコンから写したもの/PostPet2001/本体";
    atDialog([&] {
        EXPECT_TRUE(dialog.lblPostPetFlder->wordWrap());
        const int oneLine = dialog.lblPostPetFlder->fontMetrics().height();
        EXPECT_GE(dialog.lblPostPetFlder->heightForWidth(dialog.lblPostPetFlder->width()),
                  2 * oneLine);
        EXPECT_GE(dialog.lblPostPetFlder->height(), 2 * oneLine);
        cancel();
    });
}

}
}
