#include "app/settings.h"
#include "dialogs/frm_dir_sel.h"
#include "platform/forms/screen.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/test_hooks.h"
#include "platform/system/test_hooks.h"
#include "platform/system/volumes.h"
#include "support/dialog_checks.h"
#include "support/modal_script.h"
#include "support/report_list.h"
#include "support/screen_driver.h"
#include "support/temp_folder.h"

#include <functional>

namespace tolvek::test {
namespace {

namespace fs = std::filesystem;

class FrmDirSelTest : public ::testing::Test {
protected:
    FrmDirSelTest()
    {
        fs::create_directories(folder / "one/PostPet/受信フォルダ");
        fs::create_directories(folder / "two");
        one = pathText(folder / "one");
        two = pathText(folder / "two");
        hooks::setVolumeFolders({(folder / "one").string(), (folder / "two").string()});
        gPostPetDir = u"/home/taro/PostPet";
        reports.listen();
    }
    ~FrmDirSelTest() override
    {
        hooks::setVolumeFolders({});
        hooks::setMsgBox({});
        EXPECT_EQ(reports.take(), Reports{});
    }

    void atChooser(const std::function<void()>& steps)
    {
        const ModalScript script("frmDir_Sel", [&](QWidget&) { steps(); });
        chooser.ShowModal();
        EXPECT_FALSE(chooser.Loaded());
    }
    void ok() { chooser.cmbOK->click(); }
    void cancel() { chooser.cmbCancel->click(); }
    void type(const QString& path)
    {
        chooser.txtPet_Dir->selectAll();
        QTest::keyClicks(chooser.txtPet_Dir, path);
    }
    void openInList(const QString& name)
    {
        chooser.Dir1->setCurrentItem(chooser.Dir1->findItems(name, Qt::MatchExactly).back());
        key(*chooser.Dir1, Qt::Key_Return);
    }

    TempFolder folder;
    ReportList reports;
    Text one, two;
    frmDir_Sel chooser;
};

TEST_F(FrmDirSelTest, BeginsAtTheFirstDriveWhateverTheFieldHolds)
{
    atChooser([&] {
        EXPECT_EQ(chooser.Div1->Drive(), one);
        EXPECT_EQ(chooser.Dir1->Path(), one);
        EXPECT_EQ(chooser.txtPet_Dir->Text(), one) << "the field shows the open folder";
        cancel();
    });
    EXPECT_EQ(gPostPetDir, u"/home/taro/PostPet");
}

TEST_F(FrmDirSelTest, OkRightAfterOpeningStoresWhatThePathsChangeGave)
{
    atChooser([&] { ok(); });
    EXPECT_EQ(gPostPetDir, one);
}

TEST_F(FrmDirSelTest, AnEmptyPathIsStoredToo)
{
    atChooser([&] {
        chooser.txtPet_Dir->clear();
        ok();
    });
    EXPECT_EQ(gPostPetDir, u"");
}

TEST_F(FrmDirSelTest, AFolderOfTheListGoesToTheBoxAndIsStoredByOk)
{
    atChooser([&] {
        openInList(QStringLiteral("PostPet"));
        EXPECT_EQ(chooser.txtPet_Dir->Text(), joinPath(one, u"PostPet"));
        EXPECT_EQ(gPostPetDir, u"/home/taro/PostPet") << "not before OK";
        ok();
    });
    EXPECT_EQ(gPostPetDir, joinPath(one, u"PostPet"));
}

TEST_F(FrmDirSelTest, AChangeOfTheDriveStoresAtOnceAndStaysAfterCancel)
{
    atChooser([&] {
        key(*chooser.Div1, Qt::Key_Down);
        EXPECT_EQ(gPostPetDir, two);
        EXPECT_EQ(chooser.Dir1->Path(), two);
        EXPECT_EQ(chooser.txtPet_Dir->Text(), two);
        cancel();
    });
    EXPECT_EQ(gPostPetDir, two);
}

TEST_F(FrmDirSelTest, AChangeOfTheDriveAfterTypingShowsTheDrive)
{
    atChooser([&] {
        type(QStringLiteral("/typed"));
        chooser.Div1->setDrive(two);
        EXPECT_EQ(chooser.txtPet_Dir->Text(), two);
        chooser.Div1->setDrive(one);
        EXPECT_EQ(gPostPetDir, one);
        cancel();
    });
}

TEST_F(FrmDirSelTest, ATypedPathIsTakenWithoutAnyCheck)
{
    atChooser([&] {
        type(QStringLiteral("/no/such folder "));
        ok();
    });
    EXPECT_EQ(gPostPetDir, u"/no/such folder ");
}

TEST_F(FrmDirSelTest, CancelEscapeAndTheCloseBoxStoreNothing)
{
    const std::function<void()> roads[] = {
        [&] { cancel(); },
        [&] { key(*chooser.txtPet_Dir, Qt::Key_Escape); },
        [&] { key(*chooser.Dir1, Qt::Key_Escape); },
        [&] { key(*chooser.Div1, Qt::Key_Escape); },
        [&] { chooser.window()->close(); },
    };
    for (const auto& leave : roads) {
        atChooser([&] {
            type(QStringLiteral("/typed"));
            leave();
        });
        EXPECT_EQ(gPostPetDir, u"/home/taro/PostPet");
    }
}

TEST_F(FrmDirSelTest, EnterIsOkButInTheFolderListOpensTheFolder)
{
    atChooser([&] {
        openInList(QStringLiteral("PostPet"));
        EXPECT_TRUE(chooser.Visible());
        key(*chooser.txtPet_Dir, Qt::Key_Return);
    });
    EXPECT_EQ(gPostPetDir, joinPath(one, u"PostPet"));
    atChooser([&] { key(*chooser.Div1, Qt::Key_Return); });
    EXPECT_EQ(gPostPetDir, one);
}

TEST_F(FrmDirSelTest, EachOpeningBeginsAnew)
{
    atChooser([&] {
        chooser.Div1->setDrive(two);
        ok();
    });
    atChooser([&] {
        EXPECT_EQ(chooser.txtPet_Dir->Text(), one);
        cancel();
    });
    EXPECT_EQ(gPostPetDir, two);
}

TEST_F(FrmDirSelTest, ADriveThatWentIsToldAndTheListStays)
{
    atChooser([&] {
        fs::remove(folder / "two");
        chooser.Div1->setDrive(two);
        EXPECT_EQ(reports.take(), Reports{"Div1_Change 76"});
        EXPECT_EQ(chooser.Dir1->Path(), one);
        EXPECT_EQ(gPostPetDir, one);
        cancel();
    });
}

TEST_F(FrmDirSelTest, AFirstDriveThatWentIsToldAndThePathIsEmpty)
{
    hooks::setVolumeFolders({"/no/such/volume"});
    atChooser([&] {
        EXPECT_EQ(reports.take(), Reports{"Form_Load 76"});
        EXPECT_EQ(chooser.txtPet_Dir->Text(), u"");
        ok();
    });
    EXPECT_EQ(gPostPetDir, u"");
}

TEST_F(FrmDirSelTest, TheWordsOnTheScreen)
{
    atChooser([&] {
        EXPECT_EQ(chooser.Caption(), u"ＰｏｓｔＰｅｔ　フォルダー　設定");
        EXPECT_EQ(chooser.lbl_1->Caption(),
                  u"受信フォルダ・送信フォルダの上のフォルダまでを指定してください");
        EXPECT_EQ(chooser.cmbOK->Caption(), u"Ｏ　　Ｋ");
        EXPECT_EQ(chooser.cmbCancel->Caption(), u"Ｃａｎｃｅｌ");
        cancel();
    });
}

TEST_F(FrmDirSelTest, StandsInTheMiddleOfTheScreen)
{
    atChooser([&] {
        EXPECT_NEAR(chooser.Left(), (Screen::Width() - chooser.Width()) / 2, 1);
        EXPECT_NEAR(chooser.Top(), (Screen::Height() - chooser.Height()) / 2, 1);
        cancel();
    });
}

TEST_F(FrmDirSelTest, NothingOverlapsOrIsCutAndTabGoesFromTheTopDown)
{
    atChooser([&] {
        const std::vector<QWidget*> way = {chooser.Div1, chooser.Dir1, chooser.txtPet_Dir,
                                           chooser.cmbOK, chooser.cmbCancel};
        std::vector<QWidget*> parts = way;
        parts.push_back(chooser.lbl_1);
        expectApart(parts);
        EXPECT_GE(chooser.lbl_1->width(), chooser.lbl_1->sizeHint().width());
        expectTabWay(chooser.window(), way);
        cancel();
    });
}

}
}
