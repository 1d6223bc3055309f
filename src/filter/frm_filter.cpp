#include "filter/frm_filter.h"

#include "app/state.h"
#include "filter/filter_grid.h"
#include "platform/runtime/msg_box.h"
#include "platform/runtime/numbers.h"

namespace tolvek {

namespace {

constexpr float kFormHeight = 9375;
constexpr float kFormWidth = 8745;
constexpr FilterGridWidths kWidths = {2500, 900, 900, 3500};

// At most one button of an array is set; none is after clearAll.
template <std::size_t N> int firstSet(const CheckedArray<OptionButton*, N>& options)
{
    for (int i = 0; i < options.size(); ++i)
        if (options[i]->Value()) return i;
    return kNoneSet;
}

template <std::size_t N> void clearAll(CheckedArray<OptionButton*, N>& options)
{
    for (OptionButton* option : options)
        option->setValue(false);
}

// A rule loaded from a dump may have a code without an option button: error 340, as on
// the classic platform.
template <std::size_t N> void setOption(CheckedArray<OptionButton*, N>& options, int index)
{
    if (index < 0 || index >= options.size()) throw RuntimeError(340);
    options[index]->setValue(true);
}

void askAgain(TextBox& box)
{
    box.setText({});
    box.SetFocus();
}

}

frmFilter::frmFilter() : Form(u"frmFilter", BorderStyle::FixedDialog)
{
    setCaption(u"フィルター設定");
    setHeight(kFormHeight);
    setWidth(kFormWidth);
}

void frmFilter::Form_Load()
{
    setHeight(kFormHeight);
    setWidth(kFormWidth);
    CentreOnScreen();
    prepareGrid();
    clearFields();
    tblFilter_Get();
    enableWriting();
    if (gFilterRuleCnt > 0) dspFilterGrid();
    EditRow = 0;
}

void frmFilter::enableWriting()
{
    // OK would write back only what was read; see the header.
    comOk->setEnabled(gFilterRulesWhole);
    cmdDspChenge->setEnabled(gFilterRulesWhole);
}

void frmFilter::prepareGrid()
{
    grdFilter->Clear();
    setFilterWidths(*grdFilter, kWidths);
    setFilterHeadings(*grdFilter);
}

void frmFilter::dspFilterGrid()
{
    prepareGrid();
    grdFilter->setRows(gFilterRuleCnt + 1);
    for (int i = 0; i < gFilterRuleCnt; ++i) {
        grdFilter->setRow(i + 1);
        setFilterRow(*grdFilter, gFilterRule[i]);
    }
}

FilterEditArea frmFilter::editArea() const
{
    return {txtFilterHeader->Text(), firstSet(optTerms), firstSet(optAct), txtTerms->Text()};
}

Int16 frmFilter::EditAreaChack()
{
    const EditFault fault = editFault(editArea());
    if (fault == EditFault::None) return 0;
    if (fault == EditFault::Untouched) return 1;
    MsgBox(faultMessage(fault));
    // Kept: only a missing text clears its box and takes the focus.
    if (fault == EditFault::Header) askAgain(*txtFilterHeader);
    if (fault == EditFault::Data) askAgain(*txtTerms);
    return 1;
}

void frmFilter::clearFields()
{
    txtFilterHeader->setText({});
    txtTerms->setText({});
    clearAll(optTerms);
    clearAll(optAct);
}

void frmFilter::EditAreaClear()
{
    clearFields();
    txtFilterHeader->SetFocus();
    EditRow = 0;
}

// A deleted row is blank and loads nothing, but it is the selected row from now on.
void frmFilter::grdFilter_Click()
{
    EditRow = grdFilter->Row();
    grdFilter->setCol(0);
    if (trim(grdFilter->Text()).empty()) return;
    showRow();
}

void frmFilter::showRow()
{
    txtFilterHeader->setText(grdFilter->Text());
    grdFilter->setCol(1);
    setOption(optTerms, toInt16(grdFilter->Text()));
    grdFilter->setCol(2);
    setOption(optAct, toInt16(grdFilter->Text()));
    grdFilter->setCol(3);
    txtTerms->setText(grdFilter->Text());
}

// The grid shows the texts as typed; the entry holds them trimmed.
void frmFilter::keepEditArea(Int16 row)
{
    const FilterEditArea area = editArea();
    grdFilter->setRow(row);
    setFilterRow(*grdFilter, {0, area.TermsCode, area.ActionCode, area.Header, area.Data});
    gFilterRule[row - 1] = editedRule(area);
}

// The new rule is last, after any do-not-read rules, until the next load sorts it into
// its group. The count and the grid grow first, so they stay grown when the array has
// no room for the rule.
void frmFilter::comAdd_Click()
{
    if (EditAreaChack() != 0) return;
    ++gFilterRuleCnt;
    grdFilter->setRows(gFilterRuleCnt + 1);
    keepEditArea(gFilterRuleCnt);
    EditAreaClear();
}

// Unreachable after EditAreaChack; kept as a last guard for an existing entry.
bool frmFilter::tellMissingChoice() const
{
    const TextView missing = missingChoice(editArea());
    if (!missing.empty()) MsgBox(missing);
    return !missing.empty();
}

// On a deleted row this writes a new rule and so revives the entry.
void frmFilter::comUp_Click()
{
    if (EditRow < 1) return;
    if (EditAreaChack() != 0) return;
    if (tellMissingChoice()) return;
    keepEditArea(EditRow);
    EditAreaClear();
}

// The row stays, blank, and so does the count: row r keeps its entry r - 1.
void frmFilter::comDel_Click()
{
    if (trim(txtFilterHeader->Text()).empty() || EditRow == 0) return;
    grdFilter->setRow(EditRow);
    blankFilterRow(*grdFilter);
    gFilterRule[EditRow - 1] = FilterRule{};
    EditAreaClear();
}

// The display order dialog works on stored rules, so the edits made so far are saved. A
// later Cancel doesn't undo that.
void frmFilter::cmdDspChenge_Click()
{
    tblFilter_UpDate();
    displayOrder.ShowModal(this);
    enableWriting();
    if (gFilterRuleCnt > 0) dspFilterGrid();
    EditRow = 0;
}

void frmFilter::comOk_Click()
{
    Unload();
}

void frmFilter::comCancel_Click()
{
    gEditCancel = -1;
    tblFilter_Get();
    Unload();
}

}
