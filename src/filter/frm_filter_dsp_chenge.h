// The dialog for the order of the filter titles: the sorting rules in their old order,
// and a second list that takes them in the order in which the user picks them.
//
// It is opened only after the rules were written and loaded again. Do-not-read rules
// don't appear in the navigator and are in neither list.
//
// The form object keeps its working data when it is closed. Only the row clicked last
// survives to the next opening; everything else is reset. Closing the window stores
// nothing, and neither Enter nor Escape presses a button.
//
// Rules that couldn't be read completely aren't written: cmdOK and cmdApply are
// disabled then.
//
// Controls are valid while the form is loaded.
#pragma once
#include "filter/filter_order.h"
#include "platform/forms/buttons.h"
#include "platform/forms/form.h"
#include "platform/forms/frames.h"
#include "platform/forms/grid.h"

namespace tolvek {

class frmFilterDspChenge : public Form {
public:
    frmFilterDspChenge();

    Frame *Frame1 = nullptr, *Frame2 = nullptr;
    Grid* grdFilterBefore = nullptr; // row r is entry r - 1 of the old order
    Grid* grdFilterAfter = nullptr;
    CommandButton *cmdSUp = nullptr, *cmdAllUp = nullptr, *cmdAllDn = nullptr;
    CommandButton *cmdApply = nullptr, *cmdOK = nullptr, *cmdCancel = nullptr;

    // Stores the new order: result 0. When a rule is left in the first list, the user
    // is informed: result 9. Kept quirk: both the check and the copying go by the state
    // of the first list. The check ends at its current row, and as many entries are
    // replaced as the list has rows, plus one. Rules that weren't moved may so be lost
    // silently.
    void tblFilterBack(Int16& result);

    FilterOrder order;

protected:
    void buildControls() override;
    void Form_Load() override;

private:
    void buildLists();
    void buildMoves();
    void buildBottom();
    void setTabOrder();
    void connectEvents();

    void dspGridInit();
    void dspBeforeGrid();
    void showAfter(Int16 row, const FilterRule& shown);
    bool allMoved();
    void enableWriting();

    void grdFilterBefore_Click();
    void cmdSUp_Click();
    void cmdAllUp_Click();
    void cmdAllDn_Click();
    void cmdApply_Click();
    void cmdOK_Click();
    void cmdCancel_Click();
};

}
