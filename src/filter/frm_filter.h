// The filter editor: adds, changes and deletes rules directly in gFilterRule. The
// caller stores the rules after the form is closed; only the button for the display
// order saves earlier.
//
// gEditCancel tells how the editor was closed: -1 for comCancel alone; any other way
// counts as OK. Neither Enter nor Escape presses a button, since one would discard
// typed rules and the other keep half-typed ones.
//
// The dialog must not write what it can't show: when the rules couldn't be read
// completely, comOk and cmdDspChenge are disabled.
//
// The number of rules isn't checked. One too many is error 9, and a click on a rule
// whose code has no option button is error 340. Both are untrapped and end the program.
//
// Controls are valid while the form is loaded.
#pragma once
#include "filter/filter_edit_area.h"
#include "filter/frm_filter_dsp_chenge.h"
#include "platform/forms/buttons.h"
#include "platform/forms/form.h"
#include "platform/forms/frames.h"
#include "platform/forms/grid.h"
#include "platform/forms/label.h"
#include "platform/forms/text_box.h"

namespace tolvek {

class frmFilter : public Form {
public:
    frmFilter();

    Frame* Frame1 = nullptr; // the edit area, with the buttons that act on it
    Label* Label1 = nullptr;
    TextBox* txtFilterHeader = nullptr;
    Frame* Frame2 = nullptr;
    CheckedArray<OptionButton*, 6> optTerms;
    Frame* Frame3 = nullptr;
    CheckedArray<OptionButton*, 2> optAct;
    Label* Label2 = nullptr;
    TextBox* txtTerms = nullptr;
    CommandButton *comAdd = nullptr, *comUp = nullptr, *comDel = nullptr;
    Grid* grdFilter = nullptr; // row r is entry r - 1 of gFilterRule
    CommandButton *cmdDspChenge = nullptr, *comOk = nullptr, *comCancel = nullptr;

    // A member, so that it remembers its last selected row over its closings.
    frmFilterDspChenge displayOrder;

protected:
    void buildControls() override;
    void Form_Load() override;

private:
    void buildEditArea();
    void buildOptions();
    void buildEditButtons();
    void buildBottom();
    void setTabOrder();
    void connectEvents();

    // 0 when the edit area holds a complete rule; otherwise shows what is missing.
    Int16 EditAreaChack();
    void EditAreaClear();
    void dspFilterGrid();
    void prepareGrid();
    void clearFields();
    FilterEditArea editArea() const;
    void keepEditArea(Int16 row);
    void showRow();
    bool tellMissingChoice() const;
    void enableWriting();

    void grdFilter_Click();
    void comAdd_Click();
    void comUp_Click();
    void comDel_Click();
    void cmdDspChenge_Click();
    void comOk_Click();
    void comCancel_Click();

    Int16 EditRow; // the grid row that the edit area belongs to, 0 for none
};

}
