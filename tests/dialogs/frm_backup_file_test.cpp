#include "app/state.h"
#include "dialogs/frm_backup_file.h"
#include "platform/runtime/paths.h"
#include "support/dialog_checks.h"
#include "support/modal_script.h"
#include "support/msg_box_script.h"
#include "support/screen_driver.h"
#include "support/temp_folder.h"
#include "window/frm_tolvek.h"

#include <cstdio>

namespace tolvek::test {
namespace {

const TextView kNoneYet = u"バックアップ ファイルはまだ作成されていません。";

class FrmBackupFileTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        setAppPath(pathText(folder.path()));
        gBackUpFile.clear();
        main.setLeft(1500);
        main.setTop(900);
        put("Tolvek.Mdb");
    }
    void put(const std::string& name) const { writeBytes(folder / name, "a database"); }

    // Shows the dialog and runs the steps while it is shown.
    void atDialog(const std::function<void()>& steps)
    {
        const ModalScript script("frmBackUpFile", [&](QWidget&) { steps(); });
        dialog.ShowModal();
        EXPECT_FALSE(dialog.Loaded());
    }
    void ok() { click(*dialog.cmdOK); }
    void cancel() { click(*dialog.cmdCancel); }
    std::vector<Text> listed() const
    {
        std::vector<Text> names;
        for (int i = 0; i < dialog.lstBackUpFile->ListCount(); ++i)
            names.push_back(dialog.lstBackUpFile->List(i));
        return names;
    }
    std::vector<Text> offered()
    {
        std::vector<Text> names;
        atDialog([&] {
            names = listed();
            cancel();
        });
        return names;
    }

    TempFolder folder;
    MsgBoxScript boxes;
    frmTolvek main;
    frmBackUpFile dialog{main};
};

TEST_F(FrmBackupFileTest, EveryDatabaseButTheLiveOneIsListedInTheOrderOfTheCodes)
{
    put("Tolvek_20000301.Mdb");
    put("Tolvek_20000225.Mdb");
    put("old.mdb");
    put("Archive.MDB");
    EXPECT_EQ(offered(), (std::vector<Text>{u"Archive.MDB", u"Tolvek_20000225.Mdb",
                                            u"Tolvek_20000301.Mdb", u"old.mdb"}));
}

TEST_F(FrmBackupFileTest, OnlyTheVeryNameOfTheLiveStoreIsKeptOut)
{
    put("tolvek.mdb");
    put("Tolvek.mdb");
    put("Tolvek.Mdb.Bak");
    put("Tolvek_20000225.Mdb.Compact");
    put("Tolvek.Mdb.New");
    put("Tolvek_20000225.Mdbx");
    std::filesystem::create_directory(folder / "folder.Mdb");
    EXPECT_EQ(offered(), (std::vector<Text>{u"Tolvek.mdb", u"tolvek.mdb"}));
}

TEST_F(FrmBackupFileTest, WithTheLiveStoreAloneItTellsSoAndOpensEmpty)
{
    boxes.expect(kNoneYet, MsgAnswer::Ok, u"Tolvek");
    atDialog([&] {
        EXPECT_EQ(dialog.lstBackUpFile->ListCount(), 0);
        ok();
        EXPECT_TRUE(dialog.Visible()) << "nothing is selected";
        EXPECT_EQ(gBackUpFile, u"");
        cancel();
    });
    EXPECT_EQ(gBackUpFile, u"");
}

TEST_F(FrmBackupFileTest, OkWithoutASelectionDoesNothing)
{
    put("Tolvek_20000225.Mdb");
    atDialog([&] {
        ok();
        EXPECT_TRUE(dialog.Visible());
        cancel();
    });
    EXPECT_EQ(gBackUpFile, u"");
}

TEST_F(FrmBackupFileTest, OkTakesTheSelectedName)
{
    put("Tolvek_20000225.Mdb");
    put("Tolvek_20000226.Mdb");
    put("Tolvek_20000227.Mdb");
    atDialog([&] {
        clickEntry(*dialog.lstBackUpFile, 1);
        EXPECT_EQ(gBackUpFile, u"");
        ok();
    });
    EXPECT_EQ(gBackUpFile, u"Tolvek_20000226.Mdb");
}

TEST_F(FrmBackupFileTest, EnterOnAnEntryIsOk)
{
    put("Tolvek_20000225.Mdb");
    atDialog([&] {
        key(*dialog.lstBackUpFile, Qt::Key_Down);
        key(*dialog.lstBackUpFile, Qt::Key_Return);
    });
    EXPECT_EQ(gBackUpFile, u"Tolvek_20000225.Mdb");
}

TEST_F(FrmBackupFileTest, CancelAndEscapeForgetTheSelection)
{
    put("Tolvek_20000225.Mdb");
    for (const bool byKey : {false, true}) {
        gBackUpFile = u"of an earlier choice";
        atDialog([&] {
            clickEntry(*dialog.lstBackUpFile, 0);
            if (byKey)
                key(*dialog.lstBackUpFile, Qt::Key_Escape);
            else
                cancel();
        });
        EXPECT_EQ(gBackUpFile, u"");
    }
}

TEST_F(FrmBackupFileTest, TheCloseBoxStoresNothing)
{
    put("Tolvek_20000225.Mdb");
    atDialog([&] {
        clickEntry(*dialog.lstBackUpFile, 0);
        dialog.window()->close();
    });
    EXPECT_EQ(gBackUpFile, u"");
}

TEST_F(FrmBackupFileTest, ADoubleClickAloneChoosesNothing)
{
    put("Tolvek_20000225.Mdb");
    atDialog([&] {
        ListBox& list = *dialog.lstBackUpFile;
        QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, entryPos(list, 0));
        EXPECT_TRUE(dialog.Visible());
        cancel();
    });
}

TEST_F(FrmBackupFileTest, ANewOpeningLooksAtTheFolderAnew)
{
    put("Tolvek_20000225.Mdb");
    EXPECT_EQ(offered().size(), 1u);
    put("Tolvek_20000226.Mdb");
    std::filesystem::remove(folder / "Tolvek_20000225.Mdb");
    EXPECT_EQ(offered(), std::vector<Text>{u"Tolvek_20000226.Mdb"});
}

// The listing stops one name beyond its limit; the live store's name may be among them.
TEST_F(FrmBackupFileTest, AThousandNamesAreTheMost)
{
    for (int i = 0; i < 1100; ++i) {
        char name[32];
        std::snprintf(name, sizeof name, "A%04d.Mdb", i);
        put(name);
    }
    const std::vector<Text> names = offered();
    ASSERT_EQ(names.size(), 1000u);
    EXPECT_EQ(names.front(), u"A0000.Mdb");
    EXPECT_EQ(names.back(), u"A0999.Mdb");
}

TEST_F(FrmBackupFileTest, StandsInTheMiddleOfTheMainWindow)
{
    put("Tolvek_20000225.Mdb");
    atDialog([&] {
        EXPECT_NEAR(dialog.Left(), main.Left() + (main.Width() - dialog.Width()) / 2, 1);
        EXPECT_NEAR(dialog.Top(), main.Top() + (main.Height() - dialog.Height()) / 2, 1);
        cancel();
    });
}

TEST_F(FrmBackupFileTest, TheWordsOnTheScreen)
{
    put("Tolvek_20000225.Mdb");
    atDialog([&] {
        EXPECT_EQ(dialog.Caption(), u"BackUP File 選択");
        EXPECT_EQ(dialog.cmdOK->Caption(), u"OK");
        EXPECT_EQ(dialog.cmdCancel->Caption(), u"Cnacel");
        cancel();
    });
}

TEST_F(FrmBackupFileTest, TabGoesFromTheListToTheButtons)
{
    put("Tolvek_20000225.Mdb");
    atDialog([&] {
        const std::vector<QWidget*> way{dialog.lstBackUpFile, dialog.cmdOK, dialog.cmdCancel};
        expectTabWay(dialog.window(), way);
        expectApart(way);
        cancel();
    });
}

}
}
