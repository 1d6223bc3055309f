// The ways out of the friend editor: OK with what it writes and keeps, Cancel, the
// close box; and OK when something fails.
#include "platform/runtime/codepage932.h"
#include "platform/system/test_hooks.h"
#include "store/database_files.h"
#include "support/frm_friend_fixture.h"
#include "support/report_list.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>

namespace tolvek::test {
namespace {

class FrmFriendLeavingTest : public WithFriendEditor<ArchiveFixture> {
protected:
    void SetUp() override
    {
        WithFriendEditor::SetUp();
        addFriend(u"a@example.jp", u"花子", u"モモ", u"くま", 12);
        addFriend(u"b@example.jp", u"次郎", u"クロ", u"ねこ", 3);
        gFriendSort = 1;
    }
    Text written() const { return fromAnsi(readBytes(file("Friend.Tmp"))); }
    void expectCommands(bool enabled)
    {
        Control* const commands[] = {editor.cmdOK,        editor.cmdCancel,    editor.cmdFriendUp,
                                     editor.cmdFriendAdd, editor.cmdFriendDel, editor.cmdFriendCan,
                                     editor.grdFriend};
        for (const Control* command : commands)
            EXPECT_EQ(command->Enabled(), enabled) << toUtf8(command->Name());
        EXPECT_TRUE(editor.cmdSndMail->Enabled());
    }
    // Expects an OK that fails: what is reported, and what the user can still do.
    void expectFailedOk(const std::string& report)
    {
        ReportList reports;
        reports.listen();
        atEditor([&] {
            ok();
            EXPECT_EQ(reports.take(), Reports{report});
            EXPECT_TRUE(editor.Loaded());
            expectCommands(false);
            EXPECT_EQ(freeFile(), 1) << "Friend.Tmp is closed";
            EXPECT_FALSE(gDb.isOpen());
            editor.window()->close();
        });
        EXPECT_EQ(gEditCancel, 0);
    }
    static Book wholeBook()
    {
        return {u"くま/モモ/花子/a@example.jp/12", u"ねこ/クロ/次郎/b@example.jp/3"};
    }
};

// ---- OK ----

TEST_F(FrmFriendLeavingTest, OkWritesTheGridAndEmptiesTheTable)
{
    atEditor([&] {
        expectCommands(true);
        add(u" new@example.jp ", u"新　", u"いぬ");
        ok();
    });
    EXPECT_EQ(gEditCancel, 0);
    EXPECT_EQ(written(), u"\"1\",\"モモ\",\"花子\",\"a@example.jp\",12\r\n"
                         u"\"4\",\"クロ\",\"次郎\",\"b@example.jp\",3\r\n"
                         u"\"9\",\"ポチ\",\"新\",\"new@example.jp\",0\r\n");
    EXPECT_TRUE(book().empty());
    EXPECT_FALSE(gDb.isOpen());
}

TEST_F(FrmFriendLeavingTest, ARowWithBlanksOnlyAsItsAddressIsADeletedOne)
{
    atEditor([&] {
        pick(1);
        editor.txtAddress->setText(u" 　 ");
        click(*editor.cmdFriendUp);
        ok();
    });
    EXPECT_EQ(written(), u"\"4\",\"クロ\",\"次郎\",\"b@example.jp\",3\r\n");
}

TEST_F(FrmFriendLeavingTest, AKindTypedByHandThatIsUnknownIsLost)
{
    atEditor([&] {
        pick(1);
        editor.txtPetKind->setText(u"ひつじ");
        click(*editor.cmdFriendUp);
        ok();
    });
    EXPECT_TRUE(written().starts_with(u"\"0\",")) << toUtf8(written());
    readFriendTmp();
    EXPECT_EQ(book().front(), u"/モモ/花子/a@example.jp/12");
}

TEST_F(FrmFriendLeavingTest, ATwinFallsAwayAndTheUpperOneStays)
{
    atEditor([&] {
        add(u"A@example.jp", u"同じ人");
        ok();
    });
    readFriendTmp();
    EXPECT_EQ(book(), wholeBook());
}

TEST_F(FrmFriendLeavingTest, AQuoteInACellShiftsNoRecord)
{
    atEditor([&] {
        pick(1);
        enter(u"く\"ま", u"モ\"モ", u"\"花子\"", u"\"a\"@example.jp");
        click(*editor.cmdFriendUp);
        ok();
    });
    readFriendTmp();
    EXPECT_EQ(book(), (Book{u"/モ’モ/’花子’/’a’@example.jp/12", u"ねこ/クロ/次郎/b@example.jp/3"}));
}

TEST_F(FrmFriendLeavingTest, ASingleQuoteInACellEndsNoReadingOfTheBook)
{
    atEditor([&] {
        pick(1);
        enter(u"くま", u"モ'モ", u"O'Hara", u"o'hara@example.jp");
        click(*editor.cmdFriendUp);
        ok();
    });
    readFriendTmp();
    EXPECT_EQ(book(),
              (Book{u"ねこ/クロ/次郎/b@example.jp/3", u"くま/モ’モ/O’Hara/o’hara@example.jp/12"}));
}

// A row that the table doesn't accept would cost the user all rows below it.
TEST_F(FrmFriendLeavingTest, ABoxTakesNoMoreThanTheTable)
{
    const Text tooLong(100, u'字'), fits(64, u'字');
    atEditor([&] {
        pick(1);
        for (TextBox* box :
             {editor.txtPetKind, editor.txtPetName, editor.txtName, editor.txtAddress}) {
            box->clear();
            QGuiApplication::clipboard()->setText(toQt(tooLong + u"\r\n"));
            box->paste();
        }
        click(*editor.cmdFriendUp);
        ok();
    });
    readFriendTmp();
    EXPECT_EQ(book(), (Book{u"ねこ/クロ/次郎/b@example.jp/3",
                            u"/" + fits + u"/" + fits + u"/" + fits + u"/12"}));
}

// When read back, this character is the end of the file, whatever cell it is in.
TEST_F(FrmFriendLeavingTest, AnEndOfFileCharacterInACellCutsOffNothing)
{
    atEditor([&] {
        editor.grdFriend->setTextMatrix(1, 3, u" 花\x1a子");
        ok();
    });
    readFriendTmp();
    EXPECT_EQ(book(), wholeBook());
}

TEST_F(FrmFriendLeavingTest, TheGridsOrderNamesAndOddCharactersComeBackAsTold)
{
    atEditor([&] {
        pick(1);
        enter(u"くま", u"o'h, |モ", u"a, b", u"a@example.jp");
        click(*editor.cmdFriendUp);
        ok();
    });
    readFriendTmp();
    EXPECT_EQ(book().front(), u"くま/o’h, ｜モ/a, b/a@example.jp/12");
}

TEST_F(FrmFriendLeavingTest, WithAllRowsDeletedTheBookIsEmpty)
{
    atEditor([&] {
        remove(1);
        remove(2);
        ok();
    });
    readFriendTmp();
    EXPECT_EQ(written(), u"");
    EXPECT_TRUE(book().empty());
}

TEST_F(FrmFriendLeavingTest, OkKeepsPlaceSizeAndColumnsAsTheyStand)
{
    atEditor([&] {
        editor.setLeft(600);
        editor.setTop(900);
        editor.setWidth(12000);
        editor.setHeight(7500);
        editor.grdFriend->horizontalHeader()->resizeSection(3, 180); // as if dragged
        ok();
    });
    EXPECT_EQ(gFriendLeft, 600);
    EXPECT_EQ(gFriendTop, 900);
    EXPECT_EQ(gFriendWidth, 12000);
    EXPECT_EQ(gFriendHeight, 7500);
    EXPECT_EQ(gFriendColWidth[3], 900);
    EXPECT_EQ(gFriendColWidth[4], 2700);
    atEditor([&] {
        EXPECT_EQ(editor.Left(), 600);
        EXPECT_EQ(editor.Top(), 900);
        EXPECT_EQ(editor.Width(), 12000);
        EXPECT_EQ(editor.Height(), 7500);
        EXPECT_EQ(editor.grdFriend->ColWidth(4), 2700);
        cancel();
    });
}

TEST_F(FrmFriendLeavingTest, APlaceBeyondSixteenBitsStopsAtTheirEnd)
{
    atEditor([&] {
        editor.setLeft(40000);
        editor.setTop(-40000);
        editor.grdFriend->setColWidth(1, 60000);
        ok();
    });
    EXPECT_EQ(gFriendLeft, 32767);
    EXPECT_EQ(gFriendTop, -32768);
    EXPECT_EQ(gFriendColWidth[1], 32767);
}

// ---- the other ways ----

TEST_F(FrmFriendLeavingTest, CancelLeavesTableFileAndPlaceAsTheyWere)
{
    writeBytes(file("Friend.Tmp"), "as it was");
    atEditor([&] {
        remove(1);
        editor.setLeft(600);
        editor.grdFriend->setColWidth(1, 2000);
        cancel();
    });
    EXPECT_EQ(gEditCancel, -1);
    EXPECT_EQ(book(), wholeBook());
    EXPECT_EQ(readBytes(file("Friend.Tmp")), "as it was");
    EXPECT_EQ(gFriendLeft, 300);
    EXPECT_EQ(gFriendColWidth[1], 900);
}

TEST_F(FrmFriendLeavingTest, TheCloseBoxCountsAsNotCancelledAndStoresNothing)
{
    atEditor([&] {
        remove(1);
        editor.setLeft(600);
        editor.window()->close();
    });
    EXPECT_EQ(gEditCancel, 0);
    EXPECT_EQ(book(), wholeBook());
    EXPECT_FALSE(exists("Friend.Tmp"));
    EXPECT_EQ(gFriendLeft, 300);
}

// ---- failures of OK ----

TEST_F(FrmFriendLeavingTest, ACountBeyondSixteenBitsStopsOkBeforeTheTable)
{
    addFriend(u"c@example.jp", u"三郎", u"シロ", u"かめ", 40000);
    expectFailedOk("cmdOK_Click 6");
    EXPECT_EQ(book().size(), 3U);
    EXPECT_EQ(written(), u"\"1\",\"モモ\",\"花子\",\"a@example.jp\",12\r\n"
                         u"\"4\",\"クロ\",\"次郎\",\"b@example.jp\",3\r\n");
    EXPECT_FALSE(exists("Friend.Book"));
}

TEST_F(FrmFriendLeavingTest, AnUnwritableFileStopsOkBeforeTheTable)
{
    std::filesystem::create_directory(file("Friend.Tmp"));
    expectFailedOk("cmdOK_Click 75");
    EXPECT_EQ(book(), wholeBook());
}

TEST_F(FrmFriendLeavingTest, ACopyThatCantBeMadeStopsOkBeforeTheTable)
{
    std::filesystem::create_directory(file("Friend.Book"));
    expectFailedOk("cmdOK_Click 75");
    EXPECT_EQ(book(), wholeBook());
}

TEST_F(FrmFriendLeavingTest, OnAnEmptyTableTheOldCountCanStopOk)
{
    execute(Statement{u"DELETE FROM tblFriend"});
    gFriendRowCnt = 5;
    expectFailedOk("cmdOK_Click 30009");
}

TEST_F(FrmFriendLeavingTest, ATableThatCantBeEmptiedKeepsTheOldBookAndNoCopy)
{
    hooks::setFileProbe([](FileOperation operation, const Path& path) {
        if (operation == FileOperation::Write && path.filename().string().starts_with("Tolvek.Mdb"))
            throw std::system_error(std::make_error_code(std::errc::no_space_on_device));
    });
    expectFailedOk("cmdOK_Click 61");
    hooks::setFileProbe({});
    EXPECT_EQ(book(), wholeBook());
    EXPECT_FALSE(exists("Friend.Book"));
    EXPECT_FALSE(exists("Friend.Book.Read"));
}

}
}
