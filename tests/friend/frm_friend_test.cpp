// Editing in the friend editor's grid: opening, choosing, adding, changing,
// deleting.
#include "store/database_files.h"
#include "support/frm_friend_fixture.h"
#include "support/report_list.h"
#include "support/yield_watch.h"

namespace tolvek::test {
namespace {

class FrmFriendTest : public WithFriendEditor<ArchiveFixture> {
protected:
    static void givenThree()
    {
        addFriend(u"b@example.jp", u"あきこ", u"モモ", u"くま", 12);
        addFriend(u"c@example.jp", u"うめこ", u"クロ", u"ねこ", 0);
        addFriend(u"a@example.jp", u"いくこ", u"ポチ", u"いぬ", 305);
    }
    std::vector<Text> addresses() const
    {
        std::vector<Text> texts;
        for (int i = 1; i < editor.grdFriend->Rows(); ++i)
            texts.push_back(trim(editor.grdFriend->TextMatrix(i, 4)));
        return texts;
    }
};

// ---- opening ----

struct Order {
    int sort;
    std::vector<Text> addresses;
};

TEST_F(FrmFriendTest, EachOrderSortsTheWholeBook)
{
    givenThree();
    const Order orders[] = {{1, {u"a@example.jp", u"b@example.jp", u"c@example.jp"}},
                            {2, {u"b@example.jp", u"a@example.jp", u"c@example.jp"}},
                            {3, {u"c@example.jp", u"a@example.jp", u"b@example.jp"}}};
    for (const Order& order : orders) {
        gFriendSort = order.sort;
        atEditor([&] {
            EXPECT_EQ(addresses(), order.addresses) << order.sort;
            EXPECT_EQ(gFriendRowCnt, 3);
            cancel();
        });
    }
}

TEST_F(FrmFriendTest, ARowShowsItsNumberAndTheTextsBehindABlank)
{
    givenThree();
    atEditor([&] {
        EXPECT_EQ(row(0),
                  (std::vector<Text>{u"", u"ペットの種類", u"ペットの名前", u"飼い主の名前",
                                     u"飼い主のメールアドレス", u"ペットが運んだメール数"}));
        EXPECT_EQ(row(2), (std::vector<Text>{u"2", u" いぬ", u" ポチ", u" いくこ", u" a@example.jp",
                                             u"305"}));
        EXPECT_EQ(editor.grdFriend->Rows(), 4);
        expectAreaEmpty();
        cancel();
    });
}

TEST_F(FrmFriendTest, AnEmptyBookShowsTheDesignsRowsAndKeepsTheOldCount)
{
    gFriendRowCnt = 7;
    atEditor([&] {
        EXPECT_EQ(editor.grdFriend->Rows(), 2);
        EXPECT_EQ(row(1), std::vector<Text>(6));
        EXPECT_EQ(row(0)[1], u"ペットの種類");
        EXPECT_EQ(gFriendRowCnt, 7);
        cancel();
    });
}

TEST_F(FrmFriendTest, AnOrderThatNoCommandGivesFailsByItsComma)
{
    givenThree();
    gFriendSort = 9;
    ReportList reports;
    reports.listen();
    atEditor([&] {
        const Reports reported = reports.take();
        ASSERT_EQ(reported.size(), 1U);
        EXPECT_TRUE(reported[0].starts_with("dspFriend ")) << reported[0];
        cancel();
    });
}

// If it were stored, the rows that it doesn't show would be lost.
TEST_F(FrmFriendTest, ABookThatCantBeReadCantBeStored)
{
    givenThree();
    renameDatabase(gDbPath, gDbPath + u".away");
    gFriendRowCnt = 1;
    ReportList reports;
    reports.listen();
    atEditor([&] {
        EXPECT_EQ(reports.take(), Reports{"dspFriend 3024"});
        renameDatabase(gDbPath + u".away", gDbPath);
        ok();
        EXPECT_TRUE(editor.Loaded());
        EXPECT_FALSE(editor.cmdOK->Enabled());
        cancel();
    });
    EXPECT_EQ(book().size(), 3U);
    atEditor([&] {
        EXPECT_TRUE(editor.cmdOK->Enabled());
        cancel();
    });
}

// Only the first row is valid: another program has written the others.
TEST_F(FrmFriendTest, ABookThatFailsInItsMiddleCantBeStoredEither)
{
    givenThree();
    execute(Statement{u"INSERT INTO tblFriend (tblFriend_Address) VALUES( 'z@example.jp' )"});
    gFriendSort = 1;
    ReportList reports;
    reports.listen();
    atEditor([&] {
        EXPECT_EQ(reports.take(), Reports{"dspFriend 94"});
        EXPECT_EQ(trim(row(3)[4]), u"c@example.jp");
        EXPECT_FALSE(editor.cmdOK->Enabled());
        cancel();
    });
}

// ---- choosing ----

TEST_F(FrmFriendTest, AClickLoadsTheRowTrimmed)
{
    givenThree();
    atEditor([&] {
        pick(2);
        expectArea({u"いぬ", u"ポチ", u"いくこ", u"a@example.jp"});
        editor.grdFriend->setTextMatrix(3, 3, u" 　花　子　 ");
        pick(3);
        EXPECT_EQ(editor.txtName->Text(), u"花　子");
        cancel();
    });
}

TEST_F(FrmFriendTest, ClickingAnEmptyRowEmptiesTheBoxesAndTheCount)
{
    givenThree();
    atEditor([&] {
        pick(1);
        click(*editor.cmdFriendDel);
        pick(2);
        expectArea({u"いぬ", u"ポチ", u"いくこ", u"a@example.jp"});
        pick(1);
        expectAreaEmpty();
        add(u"new@example.jp");
        EXPECT_EQ(row(4)[5], u"0");
        cancel();
    });
}

TEST_F(FrmFriendTest, ACountBeyondSixteenBitsEndsTheProgramAtTheClick)
{
    addFriend(u"a@example.jp", u"花子", u"モモ", u"くま", 40000);
    boxes.expect(u"実行時エラー '6':\r\n\r\n" + errorText(6), MsgAnswer::Ok, u"Tolvek");
    const ModalScript script("frmFriend", [&](QWidget&) {
        QTest::mouseClick(editor.grdFriend->viewport(), Qt::LeftButton, {},
                          editor.grdFriend->cellRect(1, 1).center());
    });
    EXPECT_THROW(editor.ShowModal(), ProgramEnd);
}

TEST_F(FrmFriendTest, EnterAndSpaceOnARowAreAClickAndMovingIsNone)
{
    givenThree();
    atEditor([&] {
        pick(1);
        key(*editor.grdFriend, Qt::Key_Down);
        EXPECT_EQ(editor.txtName->Text(), u"あきこ");
        key(*editor.grdFriend, Qt::Key_Return);
        EXPECT_EQ(editor.txtName->Text(), u"いくこ");
        key(*editor.grdFriend, Qt::Key_Down);
        key(*editor.grdFriend, Qt::Key_Space);
        EXPECT_EQ(editor.txtName->Text(), u"うめこ");
        cancel();
    });
}

// ---- adding ----

TEST_F(FrmFriendTest, ANewFriendStandsLastAsTypedBehindABlank)
{
    givenThree();
    atEditor([&] {
        enter(u"かめ ", u" ポチ", u"", u" new@example.jp　");
        click(*editor.cmdFriendAdd);
        EXPECT_EQ(row(4), (std::vector<Text>{u"4", u" かめ ", u"  ポチ", u" ",
                                             u"  new@example.jp　", u"0"}));
        EXPECT_EQ(gFriendRowCnt, 4);
        EXPECT_EQ(editor.grdFriend->Row(), 4);
        expectAreaEmpty();
        click(*editor.cmdFriendUp); // no row is selected
        EXPECT_EQ(row(4)[1], u" かめ ");
        cancel();
    });
}

TEST_F(FrmFriendTest, WithoutAnAddressNothingIsAdded)
{
    atEditor([&] {
        for (const Text& blank : {Text(u""), Text(u"  "), Text(u"　")}) {
            add(blank);
            EXPECT_EQ(gFriendRowCnt, 0);
            EXPECT_EQ(editor.txtName->Text(), u"新");
        }
        cancel();
    });
}

TEST_F(FrmFriendTest, InAnEmptyBookANewFriendComesBehindTheOldCount)
{
    gFriendRowCnt = 2;
    atEditor([&] {
        add(u"new@example.jp");
        EXPECT_EQ(addresses(), (std::vector<Text>{u"", u"", u"new@example.jp"}));
        cancel();
    });
}

TEST_F(FrmFriendTest, ANewFriendTakesTheMailCountOfTheRowLastClicked)
{
    givenThree();
    atEditor([&] {
        add(u"first@example.jp");
        EXPECT_EQ(row(4)[5], u"0");
        pick(2);
        click(*editor.cmdFriendCan);
        add(u"second@example.jp");
        EXPECT_EQ(row(5)[5], u"305");
        cancel();
    });
    atEditor([&] { // the form object survives its closing
        add(u"third@example.jp");
        EXPECT_EQ(row(4)[5], u"305");
        editor.window()->close();
    });
    atEditor([&] {
        pick(1);
        add(u"fourth@example.jp");
        EXPECT_EQ(row(4)[5], u"12");
        cancel();
    });
}

// ---- changing ----

TEST_F(FrmFriendTest, AChangeWritesTheChosenRow)
{
    givenThree();
    atEditor([&] {
        pick(2);
        editor.txtName->setText(u"郁子");
        click(*editor.cmdFriendUp);
        EXPECT_EQ(row(2), (std::vector<Text>{u"2", u" いぬ", u" ポチ", u" 郁子", u" a@example.jp",
                                             u"305"}));
        EXPECT_EQ(gFriendRowCnt, 3);
        expectAreaEmpty();
        cancel();
    });
}

TEST_F(FrmFriendTest, AChangeGoesToTheChosenRowAndADeletionToTheGridsOwn)
{
    givenThree();
    atEditor([&] {
        pick(1);
        key(*editor.grdFriend, Qt::Key_Down);
        editor.txtName->setText(u"秋子");
        click(*editor.cmdFriendUp);
        EXPECT_EQ(row(1)[3], u" 秋子");
        EXPECT_EQ(row(2)[3], u" いくこ");
        EXPECT_EQ(editor.grdFriend->Row(), 1);
        pick(1);
        key(*editor.grdFriend, Qt::Key_Down);
        key(*editor.grdFriend, Qt::Key_Down);
        click(*editor.cmdFriendDel);
        EXPECT_EQ(row(1)[4], u" b@example.jp");
        EXPECT_EQ(row(3), (std::vector<Text>{u"3", u"", u"", u"", u"", u""}));
        cancel();
    });
}

TEST_F(FrmFriendTest, AnEmptyAddressMakesAChangedRowADeletedOne)
{
    givenThree();
    atEditor([&] {
        pick(1);
        editor.txtAddress->setText(u"");
        click(*editor.cmdFriendUp);
        EXPECT_EQ(row(1)[4], u" ");
        ok();
    });
    readFriendTmp();
    EXPECT_EQ(book(),
              (Book{u"いぬ/ポチ/いくこ/a@example.jp/305", u"ねこ/クロ/うめこ/c@example.jp/0"}));
}

// ---- deleting and dropping ----

TEST_F(FrmFriendTest, ADeletedRowStaysEmptyWithItsNumber)
{
    givenThree();
    atEditor([&] {
        remove(2);
        EXPECT_EQ(row(2), (std::vector<Text>{u"2", u"", u"", u"", u"", u""}));
        EXPECT_EQ(gFriendRowCnt, 3);
        EXPECT_EQ(editor.grdFriend->Rows(), 4);
        expectAreaEmpty();
        cancel();
    });
}

TEST_F(FrmFriendTest, WithoutAChosenRowNothingIsChangedOrDeleted)
{
    givenThree();
    atEditor([&] {
        for (const bool afterDropping : {false, true}) {
            if (afterDropping) {
                pick(1);
                click(*editor.cmdFriendCan);
                expectAreaEmpty();
            }
            enter(u"かめ", u"x", u"y", u"z@example.jp");
            click(*editor.cmdFriendUp);
            click(*editor.cmdFriendDel);
            EXPECT_EQ(addresses(),
                      (std::vector<Text>{u"b@example.jp", u"a@example.jp", u"c@example.jp"}));
            EXPECT_EQ(editor.txtAddress->Text(), u"z@example.jp");
        }
        cancel();
    });
}

TEST_F(FrmFriendTest, DroppingUndoesNoEdit)
{
    givenThree();
    atEditor([&] {
        remove(1);
        pick(2);
        click(*editor.cmdFriendCan);
        EXPECT_EQ(addresses(), (std::vector<Text>{u"", u"a@example.jp", u"c@example.jp"}));
        cancel();
    });
}

TEST_F(FrmFriendTest, TheNextOpeningHasNoChosenRow)
{
    givenThree();
    atEditor([&] {
        pick(1);
        cancel();
    });
    atEditor([&] {
        expectAreaEmpty();
        click(*editor.cmdFriendDel);
        EXPECT_EQ(row(1)[4], u" b@example.jp");
        cancel();
    });
}

TEST_F(FrmFriendTest, NeitherEnterNorEscapePressesAButton)
{
    givenThree();
    atEditor([&] {
        enter(u"かめ", u"x", u"y", u"z@example.jp");
        QWidget* const keyed[] = {editor.txtName, editor.txtAddress, editor.cmdFriendAdd,
                                  editor.cmdOK,   editor.cmdCancel,  editor.window()};
        for (QWidget* control : keyed)
            for (const Qt::Key pressed : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape})
                key(*control, pressed);
        EXPECT_TRUE(editor.Visible());
        EXPECT_EQ(gFriendRowCnt, 3);
        EXPECT_EQ(gEditCancel, 0);
        EXPECT_FALSE(exists("Friend.Tmp"));
        cancel();
    });
}

TEST_F(FrmFriendTest, OpeningYieldsTwiceAtEachFriend)
{
    const auto opening = [&] {
        const int yields = yieldsOf([&] { editor.Load(); });
        editor.Unload();
        return yields;
    };
    const int none = opening();
    givenThree();
    EXPECT_EQ(opening() - none, 3 + 3) << "counted, then shown";
}

}
}
