#include "platform/forms/dir_lists.h"
#include "platform/system/test_hooks.h"

#include "platform/forms/events.h"
#include "platform/runtime/paths.h"
#include "platform/system/files.h"
#include "platform/system/volumes.h"
#include "support/errors.h"
#include "support/screen_driver.h"
#include "support/temp_folder.h"
#include "test_form.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tolvek::test {

namespace {

namespace fs = std::filesystem;
using Texts = std::vector<Text>;

class DirListsDriveTest : public testing::Test {
protected:
    DirListsDriveTest()
    {
        hooks::setVolumeFolders({"/", "/home/taro", "/media/ポスト"});
        drives = &form.add<DriveListBox>(u"Div1");
        drives->Move(0, 0, 6000, 345);
        onEvent(drives, &DriveListBox::Change, [this] { changes.push_back(drives->Drive()); });
        form.Show();
    }
    ~DirListsDriveTest() override { hooks::setVolumeFolders({}); }

    ShownForm form;
    DriveListBox* drives;
    Texts changes;
};

TEST_F(DirListsDriveTest, HoldsTheVolumesAndBeginsWithTheFirst)
{
    EXPECT_EQ(drives->count(), 3);
    EXPECT_EQ(drives->Drive(), u"/");
    EXPECT_TRUE(changes.empty());
}

TEST_F(DirListsDriveTest, CodeAndKeysFireAtAChangeOnly)
{
    drives->setDrive(u"/media/ポスト");
    drives->setDrive(u"/media/ポスト");
    key(*drives, Qt::Key_Up);
    key(*drives, Qt::Key_Up);
    key(*drives, Qt::Key_Up);
    EXPECT_EQ(changes, (Texts{u"/media/ポスト", u"/home/taro", u"/"}));
}

TEST_F(DirListsDriveTest, OneThatIsntThereIsError68)
{
    EXPECT_EQ(errorOf([&] { drives->setDrive(u"/HOME/taro"); }), 68);
    EXPECT_EQ(errorOf([&] { drives->setDrive(u""); }), 68);
    EXPECT_EQ(drives->Drive(), u"/");
    EXPECT_TRUE(changes.empty());
}

class DirListsTest : public testing::Test {
protected:
    DirListsTest() : dirs(form.add<DirListBox>(u"Dir1"))
    {
        dirs.Move(0, 0, 6000, 6000);
        onEvent(&dirs, &DirListBox::Change, [this] { changes.push_back(dirs.Path()); });
        form.Show();
        for (const char* name : {"b", "A", "ポスト", "c/inside/deep", ".hidden/within"})
            fs::create_directories(folder / name);
        writeBytes(folder / "file", "");
    }
    ~DirListsTest() override { hooks::setFileProbe({}); }

    Text at(TextView name) const
    {
        const Text top = pathText(folder.path());
        return name.empty() ? top : joinPath(top, name);
    }
    // The rows below that of Path.
    Texts within() const
    {
        Texts names;
        for (int row = ownRow() + 1; row < dirs.count(); ++row)
            names.push_back(fromQt(dirs.item(row)->text()));
        return names;
    }
    int ownRow() const
    {
        const auto path = nativePath(dirs.Path());
        return static_cast<int>(std::distance(path.begin(), path.end())) - 1;
    }
    void mark(TextView name)
    {
        dirs.setCurrentItem(dirs.findItems(toQt(name), Qt::MatchExactly).back());
    }
    void doubleClick(TextView name)
    {
        mark(name);
        const QPoint pos = dirs.visualItemRect(dirs.currentItem()).center();
        QTest::mouseClick(dirs.viewport(), Qt::LeftButton, {}, pos);
        QTest::mouseDClick(dirs.viewport(), Qt::LeftButton, {}, pos);
        rethrowKept();
    }

    TempFolder folder;
    ShownForm form;
    DirListBox& dirs;
    Texts changes;
};

TEST_F(DirListsTest, IsEmptyBeforeItsFirstPath)
{
    EXPECT_EQ(dirs.Path(), u"");
    EXPECT_EQ(dirs.count(), 0);
    key(dirs, Qt::Key_Return);
    EXPECT_TRUE(changes.empty());
}

TEST_F(DirListsTest, ShowsTheWayFromTheRootThenTheFoldersWithin)
{
    dirs.setPath(at(u""));
    EXPECT_EQ(dirs.Path(), at(u""));
    EXPECT_EQ(dirs.item(0)->text(), QStringLiteral("/"));
    EXPECT_EQ(dirs.item(ownRow())->text(), toQt(pathText(folder.path().filename())));
    EXPECT_EQ(dirs.currentRow(), ownRow());
    EXPECT_EQ(within(), (Texts{u"A", u"b", u"c", u"ポスト"})) << "no file, no hidden folder";
    EXPECT_EQ(changes, Texts{at(u"")});
}

TEST_F(DirListsTest, EachLevelIsIndented)
{
    dirs.setPath(at(u""));
    for (int row = 0; row < dirs.count(); ++row)
        EXPECT_EQ(dirs.item(row)->data(Qt::UserRole).toInt(), std::min(row, ownRow() + 1));
}

TEST_F(DirListsTest, TheRootIsOneRowWithASeparator)
{
    dirs.setPath(u"/");
    EXPECT_EQ(dirs.Path(), u"/");
    EXPECT_EQ(dirs.item(0)->text(), QStringLiteral("/"));
    EXPECT_FALSE(within().empty());
}

TEST_F(DirListsTest, ADoubleClickOpensAFolder)
{
    dirs.setPath(at(u""));
    doubleClick(u"c");
    EXPECT_EQ(dirs.Path(), at(u"c"));
    EXPECT_EQ(within(), Texts{u"inside"});
    doubleClick(u"inside");
    EXPECT_EQ(changes, (Texts{at(u""), at(u"c"), at(u"c/inside")}));
}

TEST_F(DirListsTest, ASingleClickOnlyMarks)
{
    dirs.setPath(at(u""));
    const QPoint pos = dirs.visualItemRect(dirs.item(ownRow() + 2)).center();
    pressAt(*dirs.viewport(), pos);
    EXPECT_EQ(dirs.currentRow(), ownRow() + 2);
    EXPECT_EQ(dirs.Path(), at(u""));
    EXPECT_EQ(changes.size(), 1u);
}

TEST_F(DirListsTest, ADoubleClickBesideTheRowsOrWithAnotherButtonDoesNothing)
{
    dirs.setPath(at(u"c"));
    QTest::mouseDClick(dirs.viewport(), Qt::LeftButton, {}, {20, dirs.viewport()->height() - 3});
    QTest::mouseDClick(dirs.viewport(), Qt::RightButton, {},
                       dirs.visualItemRect(dirs.item(0)).center());
    EXPECT_EQ(dirs.Path(), at(u"c"));
}

TEST_F(DirListsTest, TheKeyboardAloneGoesDownAndUp)
{
    dirs.setPath(at(u""));
    for (auto which :
         {Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_Return, Qt::Key_Down, Qt::Key_Enter})
        key(dirs, which);
    EXPECT_EQ(dirs.Path(), at(u"c/inside"));
    key(dirs, Qt::Key_Up);
    key(dirs, Qt::Key_Return);
    EXPECT_EQ(dirs.Path(), at(u"c"));
    key(dirs, Qt::Key_Home);
    key(dirs, Qt::Key_Return);
    EXPECT_EQ(dirs.Path(), u"/");
}

TEST_F(DirListsTest, ALetterLeadsToTheNextNameThatBeginsWithIt)
{
    dirs.setPath(at(u""));
    key(dirs, Qt::Key_C);
    EXPECT_EQ(dirs.currentItem()->text(), QStringLiteral("c"));
    EXPECT_EQ(changes.size(), 1u);
}

TEST_F(DirListsTest, TheSamePathAgainReadsAnewAndFiresNothing)
{
    dirs.setPath(at(u"c"));
    fs::create_directory(folder / "c" / "new");
    dirs.setPath(at(u"c/"));
    EXPECT_EQ(dirs.Path(), at(u"c"));
    EXPECT_EQ(within(), (Texts{u"inside", u"new"}));
    EXPECT_EQ(changes.size(), 1u);
}

TEST_F(DirListsTest, NoSuchFolderIsError76AndNothingChanges)
{
    dirs.setPath(at(u"c"));
    for (TextView wrong : {u"none", u"file"})
        EXPECT_EQ(errorOf([&] { dirs.setPath(at(wrong)); }), 76) << toUtf8(wrong);
    EXPECT_EQ(errorOf([&] { dirs.setPath(u""); }), 76);
    EXPECT_EQ(dirs.Path(), at(u"c"));
    EXPECT_EQ(within(), Texts{u"inside"});
}

TEST_F(DirListsTest, APathInAnotherCaseIsTheFolderThatIsThere)
{
    dirs.setPath(at(u"C/Inside"));
    EXPECT_EQ(dirs.Path(), at(u"c/inside"));
}

TEST_F(DirListsTest, HiddenFoldersOnTheWayToThePathAreShown)
{
    dirs.setPath(at(u".hidden/within"));
    EXPECT_EQ(dirs.item(ownRow() - 1)->text(), QStringLiteral(".hidden"));
}

TEST_F(DirListsTest, ALinkToAFolderIsShownAndOpenedUnderItsOwnName)
{
    fs::create_directory_symlink(folder / "c", folder / "link");
    dirs.setPath(at(u""));
    doubleClick(u"link");
    EXPECT_EQ(dirs.Path(), at(u"link"));
    EXPECT_EQ(within(), Texts{u"inside"});
}

TEST_F(DirListsTest, AFolderThatCantBeReadShowsNothingBelow)
{
    hooks::setFileProbe([](FileOperation operation, const fs::path&) {
        if (operation == FileOperation::List)
            throw std::system_error(std::make_error_code(std::errc::permission_denied));
    });
    dirs.setPath(at(u"c"));
    EXPECT_EQ(dirs.Path(), at(u"c"));
    EXPECT_EQ(within(), Texts{});
    hooks::setFileProbe({});
    key(dirs, Qt::Key_Up);
    key(dirs, Qt::Key_Return);
    EXPECT_EQ(dirs.Path(), at(u"")) << "it can be left again";
}

TEST_F(DirListsTest, AFolderThatWentMeanwhileLeavesTheList)
{
    dirs.setPath(at(u""));
    fs::remove(folder / "b");
    doubleClick(u"b");
    EXPECT_EQ(dirs.Path(), at(u""));
    EXPECT_EQ(within(), (Texts{u"A", u"c", u"ポスト"}));
    EXPECT_EQ(changes.size(), 1u);
}

TEST_F(DirListsTest, ANameThatIsNoTextIsLeftOut)
{
    fs::create_directory(folder / "b\xff");
    dirs.setPath(at(u""));
    EXPECT_EQ(within(), (Texts{u"A", u"b", u"c", u"ポスト"}));
}

}

}
