#include "letters/window/files_dialog.h"

#include "letters/letters_fixture.h"

#include <QPushButton>
#include <QTreeWidget>

namespace tolvek::test {
namespace {

class FilesDialogTest : public LettersFixture {
protected:
    static Lines namesOf(const FilesDialog& dialog)
    {
        Lines names;
        for (const ArchiveFile& file : dialog.files())
            names.push_back(toUtf8(file.name()));
        return names;
    }
    static QTreeWidgetItem& item(const FilesDialog& dialog, const char* name)
    {
        const auto found = dialog.findChild<QTreeWidget*>()->findItems(
            QString::fromUtf8(name), Qt::MatchExactly | Qt::MatchRecursive);
        if (found.isEmpty()) throw std::logic_error(name);
        return *found.front();
    }
};

TEST_F(FilesDialogTest, OffersArchivesBackupsAndCopiesWithWhatIsShownTicked)
{
    archive("Tolvek_20010101.Mdb");
    archive("Tolvek.Mdb.Bak");
    store(with(u"a", u"b"));
    const FilesDialog dialog(folder.path(), *library());
    EXPECT_EQ(namesOf(dialog), Lines{"Tolvek.Mdb"});
    item(dialog, "Tolvek_20010101.Mdb").setCheckState(0, Qt::Checked);
    item(dialog, "Tolvek.Mdb.Bak").setCheckState(0, Qt::Checked);
    EXPECT_EQ(namesOf(dialog), (Lines{"Tolvek.Mdb", "Tolvek_20010101.Mdb", "Tolvek.Mdb.Bak"}));
}

TEST_F(FilesDialogTest, AFileFromElsewhereThatIsShownIsOfferedToo)
{
    const TempFolder elsewhere;
    std::filesystem::copy_file(live(), elsewhere / "Other.Mdb");
    const FilesDialog dialog(folder.path(), *libraryOf({elsewhere / "Other.Mdb"}));
    EXPECT_EQ(namesOf(dialog), Lines{"Other.Mdb"});
}

TEST_F(FilesDialogTest, NoFileAtAllCantBeChosen)
{
    const FilesDialog dialog(folder.path(), *library());
    item(dialog, "Tolvek.Mdb").setCheckState(0, Qt::Unchecked);
    for (const QPushButton* button : dialog.findChildren<QPushButton*>())
        EXPECT_EQ(button->isEnabled(), button->text() != u"OK");
}

TEST_F(FilesDialogTest, AFolderThatCantBeListedOffersNothing)
{
    const FilesDialog dialog(folder / "none", Library());
    EXPECT_TRUE(dialog.files().empty());
}

TEST_F(FilesDialogTest, SaysWhyAFileIsntRead)
{
    ArchiveStatus status;
    status.state = ReadState::Waiting;
    EXPECT_EQ(stateText(status).toStdString(), "書き込み中のため待っています");
    status.state = ReadState::Failed;
    status.error = 3343;
    status.description = u"壊れています";
    EXPECT_EQ(stateText(status).toStdString(), "読めません（3343： 壊れています）");
}

}
}
