#include "filter/frm_filter_dsp_chenge.h"

#include "filter_dialogs.h"
#include "platform/forms/screen.h"

namespace tolvek::test {
namespace {

const TextView kNotAllMoved = u"全てのデータを変更後に移動してください。";

class FrmFilterDspChengeTest : public FilterDialogs {
protected:
    // As opened by the editor: on rules just written and loaded.
    void atDialog(const std::function<void()>& steps)
    {
        openOnRules(steps);
        EXPECT_FALSE(dialog.Loaded());
    }
    void openOnRules(const std::function<void()>& steps)
    {
        tblFilter_Get();
        tblFilter_UpDate();
        const ModalScript script("frmFilterDspChenge", [&](QWidget&) { steps(); });
        dialog.ShowModal();
    }
    void move(int row)
    {
        clickCell(*dialog.grdFilterBefore, row, 0);
        click(*dialog.cmdSUp);
    }
    void ok() { click(*dialog.cmdOK); }
    void cancel() { click(*dialog.cmdCancel); }
    void expectRefusal() { boxes.expect(kNotAllMoved, MsgAnswer::Ok, u"Tolvek"); }

    frmFilterDspChenge dialog;
};

// ---- opening ----

TEST_F(FrmFilterDspChengeTest, OpensWithTheSortingRulesAndAnEmptySecondList)
{
    givenSorting({u"A", u"B"});
    givenNotRead({u"N"}, 30);
    const std::vector<Text> headings = {u"表示タイトル", u"ルール", u"アクション",
                                        u"フィルター条件"};
    atDialog([&] {
        EXPECT_EQ(cells(*dialog.grdFilterBefore, 0), headings);
        EXPECT_EQ(cells(*dialog.grdFilterBefore, 1),
                  (std::vector<Text>{u"A", u"1", u"0", u"A-data"}));
        EXPECT_EQ(titles(*dialog.grdFilterBefore), (std::vector<Text>{u"A", u"B"}));
        EXPECT_EQ(dialog.grdFilterBefore->Row(), 2) << "on the last rule";
        EXPECT_EQ(cells(*dialog.grdFilterAfter, 0), headings);
        EXPECT_EQ(titles(*dialog.grdFilterAfter), std::vector<Text>{u""});
        cancel();
    });
}

TEST_F(FrmFilterDspChengeTest, HasItsWordsItsWidthsAndItsPlace)
{
    atDialog([&] {
        EXPECT_EQ(dialog.Caption(), u"フィルター表示順序変更");
        EXPECT_EQ(dialog.Frame1->Caption(), u"変更前　表示順序");
        EXPECT_EQ(dialog.Frame2->Caption(), u"変更後　表示順序");
        EXPECT_EQ(dialog.cmdSUp->Caption(), u"１件移動");
        EXPECT_EQ(dialog.cmdAllUp->Caption(), u"全件移動");
        EXPECT_EQ(dialog.cmdAllDn->Caption(), u"全件戻す");
        EXPECT_EQ(dialog.cmdApply->Caption(), u"適　用");
        EXPECT_EQ(dialog.cmdOK->Caption(), u"Ｏ　Ｋ");
        EXPECT_EQ(dialog.cmdCancel->Caption(), u"取　消");
        const float widths[] = {2700, 900, 900, 3900};
        for (int col = 0; col < 4; ++col) {
            EXPECT_EQ(dialog.grdFilterBefore->ColWidth(col), widths[col]);
            EXPECT_EQ(dialog.grdFilterAfter->ColWidth(col), widths[col]);
        }
        EXPECT_NEAR(dialog.Left(), (Screen::Width() - dialog.Width()) / 2, 1);
        EXPECT_NEAR(dialog.Top(), (Screen::Height() - dialog.Height()) / 2, 1);
        cancel();
    });
}

TEST_F(FrmFilterDspChengeTest, NoControlIsCutOrCoveredAndAllColumnsShow)
{
    givenMany(40);
    atDialog([&] {
        expectApart({dialog.Frame1, dialog.Frame2, dialog.grdFilterBefore, dialog.grdFilterAfter,
                     dialog.cmdSUp, dialog.cmdAllUp, dialog.cmdAllDn, dialog.cmdApply, dialog.cmdOK,
                     dialog.cmdCancel});
        const QRect last = dialog.grdFilterBefore->cellRect(1, 3);
        EXPECT_LE(last.right(), dialog.grdFilterBefore->viewport()->width());
        expectTabWay(dialog.window(),
                     {dialog.grdFilterBefore, dialog.cmdSUp, dialog.cmdAllUp, dialog.cmdAllDn,
                      dialog.grdFilterAfter, dialog.cmdApply, dialog.cmdOK, dialog.cmdCancel});
        cancel();
    });
}

TEST_F(FrmFilterDspChengeTest, WithoutRulesThereAreOnlyHeadingsAndOkStoresNothing)
{
    atDialog([&] {
        EXPECT_EQ(dialog.grdFilterBefore->TextMatrix(0, 0), u"表示タイトル");
        EXPECT_EQ(dialog.grdFilterAfter->TextMatrix(0, 0), u"表示タイトル");
        EXPECT_EQ(titles(*dialog.grdFilterBefore), std::vector<Text>{u""});
        EXPECT_EQ(titles(*dialog.grdFilterAfter), std::vector<Text>{u""});
        ok();
    });
    EXPECT_TRUE(storedTitles().empty());
}

TEST_F(FrmFilterDspChengeTest, AFullTableEndsTheProgram)
{
    givenMany(256);
    tblFilter_Get();
    expectUntrapped(9);
    EXPECT_THROW(dialog.ShowModal(), ProgramEnd);
}

// ---- single moves ----

TEST_F(FrmFilterDspChengeTest, PickedAsCABTheyAreStoredSoWithOtherRulesCodesBesideTheirTitles)
{
    givenSorting({u"A", u"B", u"C"}); // codes 1, 2, 3
    atDialog([&] {
        for (const int row : {3, 1, 2})
            move(row);
        EXPECT_EQ(titles(*dialog.grdFilterAfter), (std::vector<Text>{u"C", u"A", u"B"}));
        EXPECT_EQ(cells(*dialog.grdFilterAfter, 1),
                  (std::vector<Text>{u"C", u"1", u"0", u"A-data"}));
        EXPECT_EQ(cells(*dialog.grdFilterAfter, 2),
                  (std::vector<Text>{u"A", u"2", u"0", u"B-data"}));
        EXPECT_EQ(cells(*dialog.grdFilterAfter, 3), (std::vector<Text>{u"B", u"99", u"99", u""}));
        EXPECT_EQ(titles(*dialog.grdFilterBefore), (std::vector<Text>(3)));
        ok();
    });
    EXPECT_EQ(storedTitles(), (std::vector<Text>{u"C", u"A", u"B"}));
    EXPECT_EQ(column(u"SELECT tblFilter_Data FROM tblFilter ORDER By tblFilter_No ASC"),
              (std::vector<Text>{u"C-data", u"A-data", u"B-data"}));
    EXPECT_EQ(column(u"SELECT tblFilter_TermsCode FROM tblFilter ORDER By tblFilter_No ASC"),
              (std::vector<Text>{u"3", u"1", u"2"}));
}

TEST_F(FrmFilterDspChengeTest, TakenFromTheTopDownEachRowShowsItsOwnRule)
{
    givenSorting({u"A", u"B"});
    atDialog([&] {
        move(1);
        move(2);
        EXPECT_EQ(cells(*dialog.grdFilterAfter, 2),
                  (std::vector<Text>{u"B", u"2", u"0", u"B-data"}));
        cancel();
    });
}

TEST_F(FrmFilterDspChengeTest, AMovedRowStaysBlankAndMovesOnlyOnce)
{
    givenSorting({u"A", u"B"});
    atDialog([&] {
        move(2);
        click(*dialog.cmdSUp);
        move(2);
        EXPECT_EQ(titles(*dialog.grdFilterBefore), (std::vector<Text>{u"A", u""}));
        EXPECT_EQ(titles(*dialog.grdFilterAfter), std::vector<Text>{u"B"});
        EXPECT_EQ(dialog.grdFilterBefore->Row(), 2);
        cancel();
    });
}

TEST_F(FrmFilterDspChengeTest, OnTheFirstOpeningNothingMovesBeforeARowIsClicked)
{
    givenSorting({u"A", u"B"});
    atDialog([&] {
        click(*dialog.cmdSUp);
        EXPECT_EQ(titles(*dialog.grdFilterBefore), (std::vector<Text>{u"A", u"B"}));
        EXPECT_EQ(titles(*dialog.grdFilterAfter), std::vector<Text>{u""});
        cancel();
    });
}

TEST_F(FrmFilterDspChengeTest, TheClickedRowIsRememberedOverASecondOpening)
{
    givenSorting({u"A", u"B"});
    atDialog([&] {
        clickCell(*dialog.grdFilterBefore, 2, 0);
        cancel();
    });
    atDialog([&] {
        click(*dialog.cmdSUp); // without a click on a row
        EXPECT_EQ(titles(*dialog.grdFilterAfter), std::vector<Text>{u"B"});
        cancel();
    });
}

TEST_F(FrmFilterDspChengeTest, ASecondOpeningBeginsTheNewOrderAnew)
{
    givenSorting({u"A", u"B"});
    atDialog([&] {
        move(2);
        cancel();
    });
    atDialog([&] {
        EXPECT_EQ(titles(*dialog.grdFilterBefore), (std::vector<Text>{u"A", u"B"}));
        move(1);
        EXPECT_EQ(titles(*dialog.grdFilterAfter), std::vector<Text>{u"A"});
        cancel();
    });
}

TEST_F(FrmFilterDspChengeTest, ARememberedRowThatTheListLacksEndsTheProgram)
{
    givenSorting({u"A", u"B", u"C", u"D"});
    atDialog([&] {
        clickCell(*dialog.grdFilterBefore, 4, 0);
        cancel();
    });
    execute(Statement{u"DELETE FROM tblFilter"});
    givenSorting({u"A"});
    boxes.expect(u"実行時エラー '30009':\r\n\r\n行の値が不正です。", MsgAnswer::Ok, u"Tolvek");
    EXPECT_THROW(openOnRules([&] { dialog.cmdSUp->click(); }), ProgramEnd);
    EXPECT_EQ(dialog.order.FilterAfter[0].Header, u"D") << "moved before the row was missed";
}

// Without rules only the next row is reset. What is left of the previous opening gets
// into memory after a count of 0 and isn't stored.
TEST_F(FrmFilterDspChengeTest, AnOpeningWithoutRulesKeepsTheOldWorkingDataAndStoresNone)
{
    givenSorting({u"A"});
    atDialog([&] {
        click(*dialog.cmdAllUp);
        cancel();
    });
    execute(Statement{u"DELETE FROM tblFilter"});
    atDialog([&] {
        EXPECT_EQ(dialog.order.AfterRow, 1);
        EXPECT_EQ(dialog.order.FilterAfter[0].Header, u"A");
        ok();
    });
    EXPECT_TRUE(storedTitles().empty());
    EXPECT_EQ(gFilterRuleCnt, 0);
}

// ---- the check and what it lets through ----

TEST_F(FrmFilterDspChengeTest, OkWithNothingMovedIsRefused)
{
    givenSorting({u"A", u"B"});
    expectRefusal();
    atDialog([&] {
        ok();
        EXPECT_TRUE(dialog.Visible());
        EXPECT_EQ(dialog.grdFilterBefore->Row(), 1) << "on the row that was found";
        cancel();
    });
    EXPECT_EQ(storedTitles(), (std::vector<Text>{u"A", u"B"}));
}

TEST_F(FrmFilterDspChengeTest, ARuleAboveTheMovedOneIsFound)
{
    givenSorting({u"A", u"B", u"C"});
    expectRefusal();
    atDialog([&] {
        move(1);
        move(3);
        ok();
        cancel();
    });
    EXPECT_EQ(storedTitles(), (std::vector<Text>{u"A", u"B", u"C"}));
}

TEST_F(FrmFilterDspChengeTest, TheCheckStopsAtTheRowThatItFoundTheTimeBefore)
{
    givenSorting({u"A", u"B", u"C"});
    expectRefusal();
    atDialog([&] {
        move(2);
        ok(); // finds A and leaves Row there
        dialog.order.BeforeRow = 1;
        click(*dialog.cmdSUp);
        ok(); // C isn't checked any more
    });
    EXPECT_EQ(storedTitles(), (std::vector<Text>{u"B", u"A"}));
}

TEST_F(FrmFilterDspChengeTest, OkAfterMovingTheFirstRuleAlonePassesAndTheOthersAreLost)
{
    givenSorting({u"A", u"B", u"C"});
    givenNotRead({u"K", u"L", u"M"}, 40);
    atDialog([&] {
        move(1);
        ok();
    });
    EXPECT_EQ(storedTitles(), (std::vector<Text>{u"A", u"M"}))
        << "with the first two that are not read";
    EXPECT_EQ(storedNumbers(), (std::vector<Text>{u"10", u"60"}));
}

TEST_F(FrmFilterDspChengeTest, MovedOneByOneTheFirstTwoThatAreNotReadAreLost)
{
    givenSorting({u"A", u"B"});
    givenNotRead({u"K", u"L", u"M"}, 30);
    atDialog([&] {
        move(2);
        move(1);
        clickCell(*dialog.grdFilterBefore, 2, 0);
        ok();
    });
    EXPECT_EQ(storedTitles(), (std::vector<Text>{u"B", u"A", u"M"}));
}

TEST_F(FrmFilterDspChengeTest, AnAlmostFullTableMovedOneByOneEndsTheProgramAtOk)
{
    givenMany(255);
    expectUntrapped(9);
    EXPECT_THROW(openOnRules([&] {
                     move(1);
                     dialog.cmdOK->click();
                 }),
                 ProgramEnd);
}

// ---- rules that are not read ----

TEST_F(FrmFilterDspChengeTest, WithOnlyRulesThatAreNotReadOkDropsTheFirstThree)
{
    givenNotRead({u"K", u"L", u"M", u"N"}, 10);
    atDialog([&] {
        EXPECT_EQ(titles(*dialog.grdFilterBefore), std::vector<Text>{u""});
        ok();
    });
    EXPECT_EQ(storedTitles(), std::vector<Text>{u"N"});
}

TEST_F(FrmFilterDspChengeTest, WithOnlyRulesThatAreNotReadMovingAllKeepsThem)
{
    givenNotRead({u"K", u"L", u"M", u"N"}, 10);
    atDialog([&] {
        click(*dialog.cmdAllUp);
        EXPECT_EQ(titles(*dialog.grdFilterAfter), std::vector<Text>{u""}) << "unseen";
        ok();
    });
    EXPECT_EQ(storedTitles(), (std::vector<Text>{u"K", u"L", u"M", u"N"}));
}

// ---- moving all, starting over ----

TEST_F(FrmFilterDspChengeTest, MovingAllEmptiesTheFirstListAndShowsEachRulesOwnCells)
{
    givenSorting({u"A", u"B", u"C"});
    givenNotRead({u"N"}, 40);
    atDialog([&] {
        move(3);
        click(*dialog.cmdAllUp);
        EXPECT_EQ(titles(*dialog.grdFilterAfter), (std::vector<Text>{u"C", u"A", u"B"}));
        EXPECT_EQ(cells(*dialog.grdFilterAfter, 3),
                  (std::vector<Text>{u"B", u"2", u"0", u"B-data"}));
        EXPECT_EQ(titles(*dialog.grdFilterBefore), std::vector<Text>{u""});
        EXPECT_EQ(dialog.grdFilterBefore->TextMatrix(0, 3), u"フィルター条件");
        EXPECT_EQ(dialog.grdFilterBefore->Row(), 0);
        ok();
    });
    EXPECT_EQ(storedTitles(), (std::vector<Text>{u"C", u"A", u"B", u"N"}));
}

TEST_F(FrmFilterDspChengeTest, AfterMovingAllOnlyTheFirstThreeEntriesAreReplaced)
{
    givenSorting({u"A", u"B", u"C", u"D"});
    atDialog([&] {
        move(4);
        click(*dialog.cmdAllUp); // D, A, B, C
        ok();
    });
    EXPECT_EQ(storedTitles(), (std::vector<Text>{u"D", u"A", u"B", u"D"}))
        << "D is stored twice, C is lost";
}

TEST_F(FrmFilterDspChengeTest, StartingOverPutsAllBack)
{
    givenSorting({u"A", u"B", u"C"});
    expectRefusal();
    atDialog([&] {
        move(3);
        click(*dialog.cmdAllUp);
        click(*dialog.cmdAllDn);
        EXPECT_EQ(titles(*dialog.grdFilterBefore), (std::vector<Text>{u"A", u"B", u"C"}));
        EXPECT_EQ(dialog.grdFilterBefore->Row(), 3);
        EXPECT_EQ(titles(*dialog.grdFilterAfter), std::vector<Text>{u""});
        EXPECT_EQ(dialog.grdFilterAfter->TextMatrix(0, 0), u"表示タイトル");
        click(*dialog.cmdSUp);
        EXPECT_EQ(titles(*dialog.grdFilterAfter), std::vector<Text>{u""}) << "no row is chosen";
        ok();
        move(2);
        EXPECT_EQ(titles(*dialog.grdFilterAfter), std::vector<Text>{u"B"});
        cancel();
    });
}

// ---- applying, leaving ----

TEST_F(FrmFilterDspChengeTest, ApplyStoresAndStaysAndASecondTimeWorksOnTheNewContent)
{
    givenSorting({u"A", u"B", u"C", u"D"});
    atDialog([&] {
        move(4);
        click(*dialog.cmdAllUp); // D, A, B, C
        click(*dialog.cmdApply);
        EXPECT_TRUE(dialog.Visible());
        EXPECT_EQ(titles(*dialog.grdFilterAfter), (std::vector<Text>{u"D", u"A", u"B", u"C"}));
        EXPECT_EQ(storedTitles(), (std::vector<Text>{u"D", u"A", u"B", u"D"}));
        gFilterRule[0].Header = gFilterRule[3].Header = u"X";
        click(*dialog.cmdApply);
        EXPECT_EQ(storedTitles(), (std::vector<Text>{u"D", u"A", u"B", u"X"}));
        cancel();
    });
}

TEST_F(FrmFilterDspChengeTest, ApplyAfterSingleMovesMayBePressedTwice)
{
    givenSorting({u"A", u"B", u"C"});
    givenNotRead({u"K", u"L", u"M"}, 40);
    atDialog([&] {
        move(1);
        click(*dialog.cmdApply);
        EXPECT_EQ(storedTitles(), (std::vector<Text>{u"A", u"M"}));
        click(*dialog.cmdApply);
        EXPECT_EQ(storedTitles(), std::vector<Text>{u"A"}) << "now M is among the replaced entries";
        cancel();
    });
}

TEST_F(FrmFilterDspChengeTest, ARefusedApplyStoresNothing)
{
    givenSorting({u"A", u"B"});
    expectRefusal();
    atDialog([&] {
        move(2);
        click(*dialog.cmdApply);
        EXPECT_TRUE(dialog.Visible());
        cancel();
    });
    EXPECT_EQ(storedTitles(), (std::vector<Text>{u"A", u"B"}));
}

TEST_F(FrmFilterDspChengeTest, CancelKeepsAnOrderThatWasApplied)
{
    givenSorting({u"A", u"B"});
    atDialog([&] {
        move(2);
        move(1);
        clickCell(*dialog.grdFilterBefore, 2, 0);
        click(*dialog.cmdApply);
        click(*dialog.cmdAllDn);
        gFilterRule[0].Header = u"in memory alone";
        cancel();
    });
    EXPECT_EQ(storedTitles(), (std::vector<Text>{u"B", u"A"}));
    EXPECT_EQ(gFilterRule[0].Header, u"B");
}

TEST_F(FrmFilterDspChengeTest, TheCloseBoxStoresNothing)
{
    givenSorting({u"A", u"B"});
    atDialog([&] {
        move(2);
        move(1);
        dialog.window()->close();
    });
    EXPECT_EQ(storedTitles(), (std::vector<Text>{u"A", u"B"}));
    EXPECT_EQ(gFilterRule[0].Header, u"A");
}

TEST_F(FrmFilterDspChengeTest, NeitherEnterNorEscapePressesAButton)
{
    givenSorting({u"A", u"B"});
    atDialog([&] {
        QWidget* const keyed[] = {dialog.grdFilterAfter, dialog.cmdAllUp,  dialog.cmdApply,
                                  dialog.cmdOK,          dialog.cmdCancel, dialog.window()};
        for (QWidget* control : keyed) {
            key(*control, Qt::Key_Return);
            key(*control, Qt::Key_Enter);
            key(*control, Qt::Key_Escape);
        }
        EXPECT_TRUE(dialog.Visible());
        EXPECT_EQ(titles(*dialog.grdFilterBefore), (std::vector<Text>{u"A", u"B"}));
        cancel();
    });
}

}
}
