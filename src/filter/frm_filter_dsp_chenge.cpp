#include "filter/frm_filter_dsp_chenge.h"

#include "filter/filter_grid.h"
#include "platform/runtime/do_events.h"
#include "platform/runtime/msg_box.h"

namespace tolvek {

namespace {

constexpr FilterGridWidths kWidths = {2700, 900, 900, 3900};
constexpr int kRowsAtFirst = 2;
// Results of tblFilterBack.
constexpr Int16 kStored = 0;
constexpr Int16 kNotAllMoved = 9;

// Row ends on the headings. The check starts there and so finds no rule left.
void emptyGrid(Grid& grid)
{
    grid.Clear();
    grid.setRows(kRowsAtFirst);
    setFilterHeadings(grid);
    grid.setCol(0);
}

}

void frmFilterDspChenge::Form_Load()
{
    CentreOnScreen();
    enableWriting();
    dspGridInit();
    order.AfterRow = 1;
    // Kept: without rules, only the next row is reset.
    if (gFilterRuleCnt < 1) return;
    order.reset();
    dspBeforeGrid();
}

void frmFilterDspChenge::enableWriting()
{
    cmdOK->setEnabled(gFilterRulesWhole);
    cmdApply->setEnabled(gFilterRulesWhole);
}

void frmFilterDspChenge::dspGridInit()
{
    grdFilterBefore->Clear();
    grdFilterAfter->Clear();
    setFilterWidths(*grdFilterBefore, kWidths);
    for (int col = 0; col < kFilterCols; ++col)
        grdFilterAfter->setColWidth(col, grdFilterBefore->ColWidth(col));
    setFilterHeadings(*grdFilterBefore);
    setFilterHeadings(*grdFilterAfter);
}

// Row ends on the last rule, so the check covers all rules.
void frmFilterDspChenge::dspBeforeGrid()
{
    Int16 row = 1;
    for (int i = 0; i < gFilterRuleCnt; ++i) {
        if (order.FilterBefore[i].ActionCode != 0) continue;
        appendFilterRow(*grdFilterBefore, row, order.FilterBefore[i]);
        ++row;
    }
}

void frmFilterDspChenge::showAfter(Int16 row, const FilterRule& shown)
{
    appendFilterRow(*grdFilterAfter, row, shown);
}

void frmFilterDspChenge::grdFilterBefore_Click()
{
    order.BeforeRow = grdFilterBefore->Row();
}

void frmFilterDspChenge::cmdSUp_Click()
{
    if (!order.canMoveOne()) return;
    order.moveOne([this](Int16 row, const FilterRule& shown) { showAfter(row, shown); });
    // The entry was blanked by moveOne; its row follows.
    grdFilterBefore->setRow(order.BeforeRow);
    blankFilterRow(*grdFilterBefore);
}

void frmFilterDspChenge::cmdAllUp_Click()
{
    order.moveAll([this](Int16 row, const FilterRule& shown) { showAfter(row, shown); });
    emptyGrid(*grdFilterBefore);
    DoEvents();
}

void frmFilterDspChenge::cmdAllDn_Click()
{
    dspGridInit();
    order.reset();
    dspBeforeGrid();
    order.AfterRow = 1;
    order.BeforeRow = 0;
    emptyGrid(*grdFilterAfter);
}

// Kept quirk: the check changes Row and leaves it on the row it found. The next check
// covers only the rows up to there.
bool frmFilterDspChenge::allMoved()
{
    const int last = grdFilterBefore->Row();
    for (int row = 1; row <= last; ++row) {
        grdFilterBefore->setRow(row);
        grdFilterBefore->setCol(0);
        if (!trim(grdFilterBefore->Text()).empty()) return false;
    }
    return true;
}

void frmFilterDspChenge::tblFilterBack(Int16& result)
{
    if (!allMoved()) {
        MsgBox(u"全てのデータを変更後に移動してください。");
        result = kNotAllMoved;
        return;
    }
    order.take(grdFilterBefore->Rows());
    tblFilter_UpDate();
    enableWriting();
    result = kStored;
}

void frmFilterDspChenge::cmdApply_Click()
{
    Int16 disregarded;
    tblFilterBack(disregarded);
}

void frmFilterDspChenge::cmdOK_Click()
{
    Int16 result;
    tblFilterBack(result);
    if (result == kStored) Unload();
}

void frmFilterDspChenge::cmdCancel_Click()
{
    dspGridInit();
    tblFilter_Get();
    if (gFilterRuleCnt > 0) dspBeforeGrid();
    Unload();
}

}
