// The ways out of the filter editor: to the display order, by OK, by Cancel.
#include "app/state.h"
#include "frm_filter_fixture.h"

namespace tolvek::test {
namespace {

using FrmFilterLeavingTest = FrmFilterTest;

// ---- the display order ----

TEST_F(FrmFilterLeavingTest, TheDisplayOrderIsOpenedOnWhatWasSavedBefore)
{
    givenSorting({u"A", u"B", u"C"});
    const ModalScript inside("frmFilterDspChenge", [&](QWidget&) {
        EXPECT_EQ(storedTitles(), (std::vector<Text>{u"A", u"C"}));
        EXPECT_EQ(titles(*editor.displayOrder.grdFilterBefore), (std::vector<Text>{u"A", u"C"}));
        click(*editor.displayOrder.cmdCancel);
    });
    atEditor([&] {
        pick(2);
        click(*editor.comDel);
        pick(1);
        editor.txtFilterHeader->setText(u"half typed");
        click(*editor.cmdDspChenge);
        EXPECT_EQ(titles(*editor.grdFilter), (std::vector<Text>{u"A", u"C"})) << "drawn anew";
        EXPECT_EQ(editor.txtFilterHeader->Text(), u"half typed");
        EXPECT_EQ(setIn(editor.optTerms), 1);
        click(*editor.comUp);
        EXPECT_EQ(gFilterRule[0].Header, u"A") << "no row is chosen any more";
        cancel();
    });
}

TEST_F(FrmFilterLeavingTest, WithoutARuleLeftTheGridIsntDrawnAnew)
{
    givenSorting({u"A", u"B"});
    const ModalScript inside("frmFilterDspChenge",
                             [&](QWidget&) { click(*editor.displayOrder.cmdCancel); });
    atEditor([&] {
        for (const int row : {1, 2}) {
            pick(row);
            click(*editor.comDel);
        }
        click(*editor.cmdDspChenge);
        EXPECT_EQ(gFilterRuleCnt, 0);
        EXPECT_EQ(titles(*editor.grdFilter), (std::vector<Text>{u"", u""}));
        cancel();
    });
}

TEST_F(FrmFilterLeavingTest, CancelKeepsWhatTheDisplayOrderHasSavedAndDropsTheRest)
{
    givenSorting({u"A"});
    const ModalScript inside("frmFilterDspChenge",
                             [&](QWidget&) { click(*editor.displayOrder.cmdCancel); });
    atEditor([&] {
        add(u"saved");
        click(*editor.cmdDspChenge);
        add(u"dropped");
        cancel();
    });
    EXPECT_EQ(gEditCancel, -1);
    EXPECT_EQ(storedTitles(), (std::vector<Text>{u"A", u"saved"}));
    EXPECT_EQ(gFilterRuleCnt, 2);
}

// ---- leaving ----

TEST_F(FrmFilterLeavingTest, CancelUndoesTheEditsInMemory)
{
    givenSorting({u"A"});
    atEditor([&] {
        add(u"B");
        cancel();
    });
    EXPECT_EQ(gEditCancel, -1);
    EXPECT_EQ(gFilterRuleCnt, 1);
    EXPECT_EQ(gFilterRule[1].Header, u"");
}

TEST_F(FrmFilterLeavingTest, OkAndTheCloseBoxKeepTheEditsInMemoryAndStoreNothingThemselves)
{
    for (const bool byOk : {true, false}) {
        atEditor([&] {
            add(u"A");
            if (byOk)
                ok();
            else
                editor.window()->close();
        });
        EXPECT_EQ(gEditCancel, 0);
        EXPECT_EQ(gFilterRuleCnt, 1);
        EXPECT_TRUE(storedTitles().empty());
    }
}

TEST_F(FrmFilterLeavingTest, NeitherEnterNorEscapePressesAButton)
{
    atEditor([&] {
        enter(u"title", 0, 0, u"x");
        QWidget* const keyed[] = {editor.txtFilterHeader, editor.txtTerms,  editor.comAdd,
                                  editor.comOk,           editor.comCancel, editor.optTerms[0],
                                  editor.cmdDspChenge,    editor.window()};
        for (QWidget* control : keyed) {
            key(*control, Qt::Key_Return);
            key(*control, Qt::Key_Enter);
            key(*control, Qt::Key_Escape);
        }
        EXPECT_TRUE(editor.Visible());
        EXPECT_EQ(gFilterRuleCnt, 0);
        EXPECT_EQ(gEditCancel, 0);
        cancel();
    });
}

TEST_F(FrmFilterLeavingTest, EnterOnARowOfTheGridIsAClick)
{
    givenSorting({u"A", u"B"});
    atEditor([&] {
        pick(1);
        key(*editor.grdFilter, Qt::Key_Down);
        EXPECT_EQ(editor.txtFilterHeader->Text(), u"A");
        key(*editor.grdFilter, Qt::Key_Return);
        EXPECT_EQ(editor.txtFilterHeader->Text(), u"B");
        cancel();
    });
}

TEST_F(FrmFilterLeavingTest, TheNextOpeningHasNoChosenRow)
{
    givenSorting({u"A"});
    atEditor([&] {
        pick(1);
        ok();
    });
    atEditor([&] {
        expectAreaEmpty();
        enter(u"other", 0, 0, u"x");
        click(*editor.comUp);
        click(*editor.comDel);
        EXPECT_EQ(gFilterRule[0].Header, u"A");
        cancel();
    });
}

}
}
