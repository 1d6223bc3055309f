// The layout of the display order dialog: the old order above, the buttons in between,
// the new order below.
#include "filter/filter_grid.h"
#include "filter/frm_filter_dsp_chenge.h"
#include "platform/forms/events.h"

namespace tolvek {

namespace {

// All in twips. A grid's position counts from its frame's corner. A grid is as wide as
// its columns plus a scroll bar.
constexpr float kMargin = 240;
constexpr float kPadding = 180;
constexpr float kGridWidth = 8400 + 300;
constexpr float kGridTop = 420;
constexpr float kGridHeight = 2475;
constexpr float kFrameWidth = kGridWidth + 2 * kPadding;
constexpr float kFrameHeight = kGridTop + kGridHeight + kPadding;
constexpr float kButtonWidth = 1395;
constexpr float kButtonHeight = 390;
constexpr float kButtonGap = 150;
constexpr float kRowGap = 165;

constexpr float kBeforeTop = 180;
constexpr float kMovesTop = kBeforeTop + kFrameHeight + kRowGap;
constexpr float kAfterTop = kMovesTop + kButtonHeight + 90;
constexpr float kBottomTop = kAfterTop + kFrameHeight + 210;
constexpr float kFormWidth = kFrameWidth + 2 * kMargin;
constexpr float kFormHeight = kBottomTop + kButtonHeight + kMargin;

constexpr float kButtonStep = kButtonWidth + kButtonGap;
constexpr float kThreeButtons = 2 * kButtonStep + kButtonWidth;

Grid* buildList(Frame& frame, TextView name, float top)
{
    frame.Move(kMargin, top, kFrameWidth, kFrameHeight);
    auto* grid = new Grid(frame, name, kFilterGridDesign);
    grid->setSpokenName(frame.Caption());
    grid->Move(kPadding, kGridTop, kGridWidth, kGridHeight);
    return grid;
}

// A row of three buttons.
void place(CommandButton* const (&buttons)[3], float left, float top)
{
    for (CommandButton* button : buttons) {
        button->Move(left, top, kButtonWidth, kButtonHeight);
        left += kButtonStep;
    }
}

}

frmFilterDspChenge::frmFilterDspChenge() : Form(u"frmFilterDspChenge", BorderStyle::FixedDialog)
{
    setCaption(u"フィルター表示順序変更");
    setWidth(kFormWidth + kFrameTwipsWide);
    setHeight(kFormHeight + kFrameTwipsHigh);
}

void frmFilterDspChenge::buildControls()
{
    buildLists();
    buildMoves();
    buildBottom();
    setTabOrder();
    connectEvents();
}

void frmFilterDspChenge::buildLists()
{
    Frame1 = new Frame(*this, u"Frame1", u"変更前　表示順序");
    grdFilterBefore = buildList(*Frame1, u"grdFilterBefore", kBeforeTop);
    Frame2 = new Frame(*this, u"Frame2", u"変更後　表示順序");
    grdFilterAfter = buildList(*Frame2, u"grdFilterAfter", kAfterTop);
}

void frmFilterDspChenge::buildMoves()
{
    cmdSUp = new CommandButton(*this, u"cmdSUp", u"１件移動");
    cmdAllUp = new CommandButton(*this, u"cmdAllUp", u"全件移動");
    cmdAllDn = new CommandButton(*this, u"cmdAllDn", u"全件戻す");
    cmdSUp->setToolTipText(
        u"変更前の行を選んでから押します。選ばれていないときや、移した行では、何も起きません。");
    place({cmdSUp, cmdAllUp, cmdAllDn}, (kFormWidth - kThreeButtons) / 2, kMovesTop);
}

void frmFilterDspChenge::buildBottom()
{
    cmdApply = new CommandButton(*this, u"cmdApply", u"適　用");
    cmdOK = new CommandButton(*this, u"cmdOK", u"Ｏ　Ｋ");
    cmdCancel = new CommandButton(*this, u"cmdCancel", u"取　消");
    place({cmdApply, cmdOK, cmdCancel}, kMargin + kFrameWidth - kThreeButtons, kBottomTop);
}

void frmFilterDspChenge::setTabOrder()
{
    Control* const tabs[] = {grdFilterBefore, cmdSUp,   cmdAllUp, cmdAllDn,
                             grdFilterAfter,  cmdApply, cmdOK,    cmdCancel};
    int tab = 0;
    for (Control* control : tabs)
        control->setTabIndex(tab++);
}

void frmFilterDspChenge::connectEvents()
{
    onEvent(grdFilterBefore, &Grid::Click, [this] { grdFilterBefore_Click(); });
    onEvent(cmdSUp, &CommandButton::Click, [this] { cmdSUp_Click(); });
    onEvent(cmdAllUp, &CommandButton::Click, [this] { cmdAllUp_Click(); });
    onEvent(cmdAllDn, &CommandButton::Click, [this] { cmdAllDn_Click(); });
    onEvent(cmdApply, &CommandButton::Click, [this] { cmdApply_Click(); });
    onEvent(cmdOK, &CommandButton::Click, [this] { cmdOK_Click(); });
    onEvent(cmdCancel, &CommandButton::Click, [this] { cmdCancel_Click(); });
}

}
