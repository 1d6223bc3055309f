#include "app/settings.h"
#include "dialogs/frm_option.h"
#include "platform/forms/dir_lists.h"
#include "platform/forms/screen.h"
#include "platform/forms/test_hooks.h"
#include "platform/runtime/numbers.h"
#include "platform/runtime/paths.h"
#include "platform/system/test_hooks.h"
#include "platform/system/volumes.h"
#include "support/dialog_checks.h"
#include "support/modal_script.h"
#include "support/msg_box_script.h"
#include "support/screen_driver.h"
#include "support/temp_folder.h"

#include <functional>

namespace tolvek::test {
namespace {

namespace fs = std::filesystem;
using Texts = std::vector<Text>;

const TextView kNotFound = u"指定されたフォルダーが見つかりません。";
const TextView kWrong = u"フォルダーの指定が間違っています。";

class FrmOptionTest : public ::testing::Test {
protected:
    FrmOptionTest()
    {
        fs::create_directories(folder / "PostPet/受信フォルダ");
        fs::create_directories(folder / "bare");
        hooks::setVolumeFolders({folder.path().string(), (folder / "bare").string()});
        gPostPetDir = at(u"PostPet");
        gMyMailAddr = u"taro@example.jp";
        gMyMailHandle = u"太郎";
        gMyPetName = u"モモ";
        gMailTextFont = u"ＭＳ ゴシック";
        gMailTextFontSize = 10;
        gMailTextFontStyle = u"0,0";
    }
    ~FrmOptionTest() override
    {
        hooks::setVolumeFolders({});
        hooks::setFontDialog({});
        for (Text* field : {&gPostPetDir, &gMyMailAddr, &gMyMailHandle, &gMyPetName, &gMailTextFont,
                            &gMailTextFontStyle})
            field->clear();
        gMailTextFontSize = 0;
    }

    static Texts fields()
    {
        return {gPostPetDir,       gMyMailAddr,   gMyMailHandle,
                gMyPetName,        gMailTextFont, decimal(gMailTextFontSize),
                gMailTextFontStyle};
    }
    Text at(TextView name) const { return joinPath(pathText(folder.path()), name); }
    void atDialog(const std::function<void()>& steps)
    {
        const ModalScript script("frmOption", [&](QWidget&) { steps(); });
        dialog.ShowModal();
        EXPECT_FALSE(dialog.Loaded());
    }
    void atChooser(const std::function<void(QWidget&)>& steps)
    {
        const ModalScript script("frmDir_Sel", steps);
        dialog.cmbOpenPostPet->click();
    }
    // Makes the font dialog return these fields; false for Cancel.
    void fontDialogGives(const FontDialogFields& fields, bool accepted = true)
    {
        hooks::setFontDialog([=, this](FontDialogFields& shown) {
            begun = shown;
            shown = fields;
            return accepted;
        });
        dialog.cmdFontSet->click();
    }
    void expectLabels(TextView font, TextView style, TextView size) const
    {
        EXPECT_EQ(dialog.lblFont->Caption(), font);
        EXPECT_EQ(dialog.lblFontStyle->Caption(), style);
        EXPECT_EQ(dialog.lblFontSize->Caption(), size);
    }
    void ok() { dialog.cmbOK->click(); }
    void cancel() { dialog.cmbCancel->click(); }
    void okStays()
    {
        ok();
        EXPECT_TRUE(dialog.Visible());
    }

    TempFolder folder;
    MsgBoxScript boxes;
    frmOption dialog;
    FontDialogFields begun; // the fields that the font dialog last started with
};

TEST_F(FrmOptionTest, ShowsTheFields)
{
    atDialog([&] {
        EXPECT_EQ(dialog.txtDisp_PetDir->Text(), at(u"PostPet"));
        EXPECT_EQ(dialog.txtMy_Address->Text(), u"taro@example.jp");
        EXPECT_EQ(dialog.txtMy_Handle->Text(), u"太郎");
        EXPECT_EQ(dialog.txtPetName->Text(), u"モモ");
        expectLabels(u"フォント：ＭＳ ゴシック", u"スタイル：標準", u"サイズ：10");
        cancel();
    });
}

TEST_F(FrmOptionTest, OkStoresEveryField)
{
    fs::create_directories(folder / "other/受信フォルダ");
    atDialog([&] {
        dialog.txtDisp_PetDir->setText(at(u"other"));
        dialog.txtMy_Address->setText(u"hanako@example.jp");
        dialog.txtMy_Handle->setText(u"花子");
        dialog.txtPetName->setText(u"コタロウ");
        fontDialogGives({u"ＭＳ 明朝", 12, true, false});
        EXPECT_EQ(gMailTextFont, u"ＭＳ ゴシック") << "not before OK";
        ok();
    });
    EXPECT_EQ(fields(), (Texts{at(u"other"), u"hanako@example.jp", u"花子", u"コタロウ",
                               u"ＭＳ 明朝", u"12", u"0,1"}));
}

TEST_F(FrmOptionTest, AnEmptyAddressIsAccepted)
{
    atDialog([&] {
        dialog.txtMy_Address->setText(u"");
        ok();
    });
    EXPECT_EQ(gMyMailAddr, u"");
}

TEST_F(FrmOptionTest, CancelEscapeAndTheCloseBoxStoreNothing)
{
    const std::function<void()> roads[] = {
        [&] { cancel(); },
        [&] { key(*dialog.txtPetName, Qt::Key_Escape); },
        [&] { dialog.window()->close(); },
    };
    for (const auto& leave : roads) {
        atDialog([&] {
            gPostPetDir.clear(); // as after a cancelled chooser
            for (TextBox* box : {dialog.txtDisp_PetDir, dialog.txtMy_Address, dialog.txtMy_Handle,
                                 dialog.txtPetName})
                box->setText(u"other");
            fontDialogGives({u"ＭＳ 明朝", 12, true, false});
            leave();
        });
        EXPECT_EQ(fields(), (Texts{at(u"PostPet"), u"taro@example.jp", u"太郎", u"モモ",
                                   u"ＭＳ ゴシック", u"10", u"0,0"}));
    }
}

TEST_F(FrmOptionTest, AFolderWithoutAReceiveFolderIsToldAndTheDialogStays)
{
    boxes.expect(kNotFound, MsgAnswer::Ok, u"Tolvek");
    atDialog([&] {
        dialog.txtDisp_PetDir->setText(at(u"bare"));
        dialog.txtPetName->setText(u"other");
        okStays();
        EXPECT_EQ(gPostPetDir, at(u"PostPet"));
        EXPECT_EQ(gMyPetName, u"モモ") << "nothing is stored";
        dialog.txtDisp_PetDir->setText(at(u"PostPet"));
        ok();
    });
    EXPECT_EQ(gMyPetName, u"other");
}

TEST_F(FrmOptionTest, AFolderThatIsntThereIsToldOtherwiseAndTheDialogStays)
{
    for (const Text& wrong : {at(u"none"), Text(u"C:\\Program Files\\So-net"), Text(u" ")}) {
        boxes.expect(kWrong, MsgAnswer::Ok, u"Tolvek");
        atDialog([&] {
            dialog.txtDisp_PetDir->setText(wrong);
            okStays();
            cancel();
        });
        EXPECT_EQ(gPostPetDir, at(u"PostPet"));
    }
}

TEST_F(FrmOptionTest, AFileInTheReceiveFoldersPlaceIsToldAndAccepted)
{
    writeBytes(folder / "bare/受信フォルダ", "");
    boxes.expect(kWrong, MsgAnswer::Ok, u"Tolvek");
    atDialog([&] {
        dialog.txtDisp_PetDir->setText(at(u"bare"));
        ok();
    });
    EXPECT_EQ(gPostPetDir, at(u"bare"));
}

TEST_F(FrmOptionTest, AReceiveFolderWithDecomposedKanaPasses)
{
    fs::create_directories(folder / "bare/受信フォルタ\u3099");
    atDialog([&] {
        dialog.txtDisp_PetDir->setText(at(u"bare/"));
        ok();
    });
    EXPECT_EQ(gPostPetDir, at(u"bare/")) << "stored as it was entered";
}

TEST_F(FrmOptionTest, TheChoosersFolderIsShownAndStoredByOk)
{
    gPostPetDir = u"C:\\Program Files\\So-net\\PostPet for Windows ver. 2.0";
    atDialog([&] {
        atChooser([&](QWidget& chooser) {
            auto& dirs = controlOf<DirListBox>(chooser, "Dir1");
            key(dirs, Qt::Key_P);
            key(dirs, Qt::Key_Return);
            press(chooser, "cmbOK");
        });
        EXPECT_EQ(dialog.txtDisp_PetDir->Text(), at(u"PostPet"));
        ok();
    });
    EXPECT_EQ(gPostPetDir, at(u"PostPet"));
}

TEST_F(FrmOptionTest, TheChoosersOkIsUndoneByCancelHere)
{
    atDialog([&] {
        atChooser([](QWidget& chooser) { press(chooser, "cmbOK"); });
        EXPECT_EQ(gPostPetDir, pathText(folder.path()));
        cancel();
    });
    EXPECT_EQ(gPostPetDir, at(u"PostPet"));
}

TEST_F(FrmOptionTest, AnotherDriveStaysAfterTheChoosersCancelUntilTheCancelHere)
{
    atDialog([&] {
        atChooser([](QWidget& chooser) {
            key(controlOf<DriveListBox>(chooser, "Div1"), Qt::Key_Down);
            press(chooser, "cmbCancel");
        });
        EXPECT_EQ(dialog.txtDisp_PetDir->Text(), at(u"bare"));
        EXPECT_EQ(gPostPetDir, at(u"bare"));
        cancel();
    });
    EXPECT_EQ(gPostPetDir, at(u"PostPet"));
}

TEST_F(FrmOptionTest, AnEmptyPathOfTheChooserIsShownAndRefusedByOk)
{
    boxes.expect(kNotFound);
    atDialog([&] {
        atChooser([](QWidget& chooser) {
            controlOf<TextBox>(chooser, "txtPet_Dir").clear();
            press(chooser, "cmbOK");
        });
        EXPECT_EQ(dialog.txtDisp_PetDir->Text(), u"");
        okStays();
        cancel();
    });
    EXPECT_EQ(gPostPetDir, at(u"PostPet"));
}

TEST_F(FrmOptionTest, TheChoosersFolderTakesThePlaceOfATypedOneEvenAfterCancel)
{
    atDialog([&] {
        dialog.txtDisp_PetDir->setText(u"/typed");
        atChooser([](QWidget& chooser) { press(chooser, "cmbCancel"); });
        EXPECT_EQ(dialog.txtDisp_PetDir->Text(), at(u"PostPet"));
        cancel();
    });
}

TEST_F(FrmOptionTest, TheStyleHasFourWords)
{
    const struct {
        const char16_t *style, *word;
    } cases[] = {{u"0,0", u"スタイル：標準"},
                 {u"0,1", u"スタイル：太字"},
                 {u"1,0", u"スタイル：斜体"},
                 {u"1,1", u"スタイル：太字 & 斜体"}};
    for (const auto& c : cases) {
        gMailTextFontStyle = c.style;
        atDialog([&] {
            EXPECT_EQ(dialog.lblFontStyle->Caption(), c.word);
            EXPECT_EQ(fromQt(dialog.lblFontStyle->text()), c.word) << "as it is painted";
            cancel();
        });
    }
}

TEST_F(FrmOptionTest, TheFontDialogBeginsWithTheStoredFieldsAtEachUse)
{
    gMailTextFontStyle = u"1,0";
    atDialog([&] {
        for (int use = 0; use < 2; ++use) {
            fontDialogGives({u"ＭＳ 明朝", 12, true, true});
            EXPECT_EQ(begun.FontName, u"ＭＳ ゴシック");
            EXPECT_EQ(begun.FontSize, 10);
            EXPECT_FALSE(begun.FontBold);
            EXPECT_TRUE(begun.FontItalic);
            expectLabels(u"フォント：ＭＳ 明朝", u"スタイル：太字 & 斜体", u"サイズ：12");
        }
        cancel();
    });
}

TEST_F(FrmOptionTest, ACancelledOrFailedFontDialogLeavesTheLabels)
{
    atDialog([&] {
        fontDialogGives({u"ＭＳ 明朝", 12, true, true}, false);
        expectLabels(u"フォント：ＭＳ ゴシック", u"スタイル：標準", u"サイズ：10");
        fontDialogGives({u"ＭＳ 明朝", 12, true, true});
        fontDialogGives({u"ＭＳ Ｐ明朝", 20, false, false}, false);
        hooks::setFontDialog([](FontDialogFields&) -> bool { throw std::bad_alloc(); });
        dialog.cmdFontSet->click();
        expectLabels(u"フォント：ＭＳ 明朝", u"スタイル：太字 & 斜体", u"サイズ：12");
        ok();
    });
    EXPECT_EQ(gMailTextFontStyle, u"1,1");
}

TEST_F(FrmOptionTest, EachStyleOfTheFontDialogHasItsText)
{
    const struct {
        bool bold, italic;
        const char16_t* style;
    } cases[] = {
        {false, false, u"0,0"}, {true, false, u"0,1"}, {false, true, u"1,0"}, {true, true, u"1,1"}};
    for (const auto& c : cases) {
        atDialog([&] {
            fontDialogGives({u"ＭＳ 明朝", 12, c.bold, c.italic});
            ok();
        });
        EXPECT_EQ(gMailTextFontStyle, c.style);
    }
}

TEST_F(FrmOptionTest, TheSizeIsRoundedHalfToEven)
{
    const struct {
        float points;
        int size;
    } cases[] = {{9.75F, 10}, {10.5F, 10}, {11.5F, 12}, {12.4F, 12}};
    for (const auto& c : cases) {
        atDialog([&] {
            fontDialogGives({u"ＭＳ 明朝", c.points, false, false});
            ok();
        });
        EXPECT_EQ(gMailTextFontSize, c.size) << c.points;
    }
}

TEST_F(FrmOptionTest, AStyleThatIsNoNumberLetsTheChoicePass)
{
    for (const TextView style : {u"", u"x", u"1,", u"1,x", u"x,1"}) {
        gMailTextFontStyle = style;
        atDialog([&] {
            fontDialogGives({u"ＭＳ 明朝", 12, false, false});
            ok();
        });
        EXPECT_EQ(gMailTextFontStyle, u"0,0") << toUtf8(style);
    }
}

TEST_F(FrmOptionTest, TheHalfOfSuchAStyleThatIsANumberIsTaken)
{
    gMailTextFontStyle = u"1,x";
    atDialog([&] {
        fontDialogGives({u"ＭＳ 明朝", 12, false, false});
        EXPECT_TRUE(begun.FontItalic);
        EXPECT_FALSE(begun.FontBold);
        cancel();
    });
}

TEST_F(FrmOptionTest, ACancelledFontDialogAfterABadStyleChangesNothing)
{
    gMailTextFontStyle = u"x,0";
    atDialog([&] {
        fontDialogGives({u"ＭＳ 明朝", 12, false, false}, false);
        EXPECT_EQ(dialog.lblFont->Caption(), u"フォント：ＭＳ ゴシック");
        cancel();
    });
}

TEST_F(FrmOptionTest, ASizeThatNoFontHasKeepsTheChoiceOut)
{
    gMailTextFontSize = 0;
    atDialog([&] {
        fontDialogGives({u"ＭＳ 明朝", 12, false, false});
        EXPECT_EQ(dialog.lblFont->Caption(), u"フォント：ＭＳ ゴシック")
            << "the failed size isn't shown";
        cancel();
    });
    gMailTextFontStyle.clear();
    atDialog([&] {
        fontDialogGives({u"ＭＳ 明朝", 12, false, false});
        EXPECT_EQ(dialog.lblFont->Caption(), u"フォント：ＭＳ 明朝")
            << "the later number of the style takes its place";
        cancel();
    });
}

TEST_F(FrmOptionTest, TheFontDialogOnTheScreen)
{
    atDialog([&] {
        const ModalScript fonts("FontDialog", [](QWidget& shown) {
            controlOf<QAbstractButton>(shown, "bold").click();
            QTest::keyClick(&shown, Qt::Key_Return);
        });
        dialog.cmdFontSet->click();
        expectLabels(u"フォント：ＭＳ ゴシック", u"スタイル：太字", u"サイズ：10");
        ok();
    });
    EXPECT_EQ(gMailTextFontStyle, u"0,1");
}

TEST_F(FrmOptionTest, EnterIsOk)
{
    atDialog([&] {
        dialog.txtPetName->setText(u"コタロウ");
        key(*dialog.txtPetName, Qt::Key_Return);
    });
    EXPECT_EQ(gMyPetName, u"コタロウ");
}

TEST_F(FrmOptionTest, TheWordsOnTheScreen)
{
    atDialog([&] {
        EXPECT_EQ(dialog.Caption(), u"オプション");
        const std::pair<const Label*, Text> labels[] = {
            {dialog.Label1, u"ＰｏｓｔＰｅｔ　フォルダー"},
            {dialog.Label2, u"例）C:\\Program Files\\So-Net\\PostPet for Windows ver. 2.0"},
            {dialog.Label3, u"ハンドル名"},
            {dialog.Label4, u"メールアドレス"},
            {dialog.Label5, u"ペットの名前"}};
        for (const auto& [label, words] : labels)
            EXPECT_EQ(label->Caption(), words);
        EXPECT_EQ(dialog.cmbOpenPostPet->Caption(), u"参照");
        EXPECT_EQ(dialog.cmdFontSet->Caption(), u"フォントセット");
        EXPECT_EQ(dialog.cmbOK->Caption(), u"Ｏ　Ｋ");
        EXPECT_EQ(dialog.cmbCancel->Caption(), u"Cancel");
        cancel();
    });
}

TEST_F(FrmOptionTest, TheToolTips)
{
    atDialog([&] {
        EXPECT_EQ(dialog.txtDisp_PetDir->ToolTipText(),
                  u"ＰｏｓｔＰｅｔをインストールしているフォルダーを指定します。");
        EXPECT_EQ(dialog.txtMy_Handle->ToolTipText(), u"あなたの名前を入力してください。");
        EXPECT_EQ(dialog.txtMy_Address->ToolTipText(),
                  u"あなたの電子メールアドレスを指定してください。");
        EXPECT_EQ(dialog.txtPetName->ToolTipText(),
                  u"あなたの飼っているペットの名前を入力してください。");
        EXPECT_EQ(dialog.cmdFontSet->ToolTipText(), u"フォント設定画面を表示します。");
        cancel();
    });
}

TEST_F(FrmOptionTest, StandsInTheMiddleOfTheScreen)
{
    atDialog([&] {
        EXPECT_NEAR(dialog.Left(), (Screen::Width() - dialog.Width()) / 2, 1);
        EXPECT_NEAR(dialog.Top(), (Screen::Height() - dialog.Height()) / 2, 1);
        cancel();
    });
}

TEST_F(FrmOptionTest, NothingOverlapsOrIsCutAndTabGoesFromTheTopDown)
{
    gMailTextFontStyle = u"1,1";
    atDialog([&] {
        const std::vector<QWidget*> way = {
            dialog.txtDisp_PetDir, dialog.cmbOpenPostPet, dialog.txtMy_Handle, dialog.txtMy_Address,
            dialog.txtPetName,     dialog.cmdFontSet,     dialog.cmbOK,        dialog.cmbCancel};
        std::vector<QWidget*> parts = way;
        for (Label* label :
             {dialog.Label1, dialog.Label2, dialog.Label3, dialog.Label4, dialog.Label5,
              dialog.lblFont, dialog.lblFontStyle, dialog.lblFontSize}) {
            EXPECT_GE(label->width(), label->sizeHint().width()) << toUtf8(label->Caption());
            parts.push_back(label);
        }
        expectApart(parts);
        expectTabWay(dialog.window(), way);
        cancel();
    });
}

}
}
