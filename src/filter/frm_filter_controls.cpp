// The layout of the filter editor: the edit area above, in the order in which a rule is
// made, the list of rules below.
#include "filter/filter_grid.h"
#include "filter/frm_filter.h"
#include "platform/forms/events.h"

namespace tolvek {

namespace {

constexpr TextView kTermsCaptions[] = {
    u"（０） Ｓｕｂｊｅｃｔ と 完全に一致",         u"（１） Ｓｕｂｊｅｃｔ に 含まれる",
    u"（２） 送受信アドレスのどちらかと完全に一致", u"（３） 送受信アドレスのどちらかに含まれる",
    u"（４） 送受信者名がどちらかと完全に一致",     u"（5） 送受信者名に含まれる",
};
constexpr TextView kActCaptions[] = {
    u"（０）振り分ける",
    u"（１）メールを読み込まない",
};

// All in twips. Positions inside a frame count from the frame's corner.
constexpr float kMargin = 240;
constexpr float kWidth = 8745 - kFrameTwipsWide - 2 * kMargin;
constexpr float kBottom = 9375 - kFrameTwipsHigh - kMargin;
constexpr float kButtonHeight = 390;
constexpr float kButtonWidth = 1395;
constexpr float kButtonGap = 150;

constexpr float kInner = kWidth - 2 * kMargin;
constexpr float kLabelDrop = 75; // aligns a label's text with the box beside it
constexpr float kBoxLeft = kMargin + 1440;
constexpr float kBoxWidth = kMargin + kInner - kBoxLeft;
constexpr float kBoxHeight = 360;
constexpr float kHeaderTop = 420;
constexpr float kOptionsTop = kHeaderTop + kBoxHeight + 150;
constexpr float kOptionsHeight = 2400;
constexpr float kOptionsGap = 180;
constexpr float kTermsWidth = 4650;
constexpr float kActWidth = kInner - kTermsWidth - kOptionsGap;
constexpr float kOptionLeft = 180;
constexpr float kOptionTop = 360;
constexpr float kOptionStep = 315;
constexpr float kOptionHeight = 300;
constexpr float kTermsTop = kOptionsTop + kOptionsHeight + 150;
constexpr float kEditButtonsTop = kTermsTop + kBoxHeight + 180;
constexpr float kEditTop = 180;
constexpr float kEditHeight = kEditButtonsTop + kButtonHeight + 180;

constexpr float kGridTop = kEditTop + kEditHeight + 180;
constexpr float kBottomTop = kBottom - kButtonHeight;
constexpr float kGridHeight = kBottomTop - 210 - kGridTop;

template <std::size_t N>
void buildArray(Frame& frame, TextView name, const TextView (&captions)[N],
                CheckedArray<OptionButton*, N>& options)
{
    for (int i = 0; i < options.size(); ++i) {
        options[i] = new OptionButton(frame, Text(name) + u"(" + decimal(i) + u")", captions[i]);
        options[i]->Move(kOptionLeft, kOptionTop + static_cast<float>(i) * kOptionStep,
                         frame.Width() - kOptionLeft - 60, kOptionHeight);
    }
}

// `place` counts from the right: 0 is the last button of its row.
CommandButton* buildButton(Container container, TextView name, TextView caption, float right,
                           int place, float top)
{
    auto* button = new CommandButton(container, name, caption);
    const float steps = static_cast<float>(place);
    button->Move(right - kButtonWidth - steps * (kButtonWidth + kButtonGap), top, kButtonWidth,
                 kButtonHeight);
    return button;
}

}

void frmFilter::buildControls()
{
    buildEditArea();
    buildOptions();
    buildEditButtons();
    grdFilter = new Grid(*this, u"grdFilter", kFilterGridDesign);
    grdFilter->setSpokenName(u"フィルター一覧");
    grdFilter->Move(kMargin, kGridTop, kWidth, kGridHeight);
    buildBottom();
    setTabOrder();
    connectEvents();
}

void frmFilter::buildEditArea()
{
    Frame1 = new Frame(*this, u"Frame1", u"条　件");
    Frame1->Move(kMargin, kEditTop, kWidth, kEditHeight);
    Label1 = new Label(*Frame1, u"Label1", u"表示タイトル");
    Label1->Move(kMargin, kHeaderTop + kLabelDrop, kBoxLeft - kMargin, kBoxHeight - kLabelDrop);
    txtFilterHeader = new TextBox(*Frame1, u"txtFilterHeader");
    txtFilterHeader->Move(kBoxLeft, kHeaderTop, kBoxWidth, kBoxHeight);
    Label2 = new Label(*Frame1, u"Label2", u"フィルター条件");
    Label2->Move(kMargin, kTermsTop + kLabelDrop, kBoxLeft - kMargin, kBoxHeight - kLabelDrop);
    txtTerms = new TextBox(*Frame1, u"txtTerms");
    Label1->setBuddy(txtFilterHeader);
    Label2->setBuddy(txtTerms);
    txtTerms->Move(kBoxLeft, kTermsTop, kBoxWidth, kBoxHeight);
}

void frmFilter::buildOptions()
{
    Frame2 = new Frame(*Frame1, u"Frame2", u"ルール");
    Frame2->Move(kMargin, kOptionsTop, kTermsWidth, kOptionsHeight);
    buildArray(*Frame2, u"optTerms", kTermsCaptions, optTerms);
    Frame3 = new Frame(*Frame1, u"Frame3", u"アクション");
    Frame3->Move(kMargin + kTermsWidth + kOptionsGap, kOptionsTop, kActWidth, kOptionsHeight);
    buildArray(*Frame3, u"optAct", kActCaptions, optAct);
}

void frmFilter::buildEditButtons()
{
    constexpr float right = kMargin + kInner;
    comAdd = buildButton(*Frame1, u"comAdd", u"追　加", right, 2, kEditButtonsTop);
    comUp = buildButton(*Frame1, u"comUp", u"変　更", right, 1, kEditButtonsTop);
    comDel = buildButton(*Frame1, u"comDel", u"削　除", right, 0, kEditButtonsTop);
    comAdd->setToolTipText(u"何も書いていないときは、何も起きません。");
    for (CommandButton* button : {comUp, comDel})
        button->setToolTipText(
            u"表の行を選んでから押します。選ばれていないときは、何も起きません。");
}

void frmFilter::buildBottom()
{
    constexpr float right = kMargin + kWidth;
    cmdDspChenge = new CommandButton(*this, u"cmdDspChenge", u"表示順変更");
    cmdDspChenge->Move(kMargin, kBottomTop, kButtonWidth, kButtonHeight);
    cmdDspChenge->setToolTipText(u"ﾌｨﾙﾀｰ表示の順番を変更します");
    comOk = buildButton(*this, u"comOk", u"Ｏ　Ｋ", right, 1, kBottomTop);
    comCancel = buildButton(*this, u"comCancel", u"キャンセル", right, 0, kBottomTop);
}

void frmFilter::setTabOrder()
{
    int tab = 0;
    txtFilterHeader->setTabIndex(tab++);
    for (OptionButton* option : optTerms)
        option->setTabIndex(tab++);
    for (OptionButton* option : optAct)
        option->setTabIndex(tab++);
    Control* const rest[] = {txtTerms,  comAdd,       comUp, comDel,
                             grdFilter, cmdDspChenge, comOk, comCancel};
    for (Control* control : rest)
        control->setTabIndex(tab++);
}

void frmFilter::connectEvents()
{
    onEvent(grdFilter, &Grid::Click, [this] { grdFilter_Click(); });
    onEvent(comAdd, &CommandButton::Click, [this] { comAdd_Click(); });
    onEvent(comUp, &CommandButton::Click, [this] { comUp_Click(); });
    onEvent(comDel, &CommandButton::Click, [this] { comDel_Click(); });
    onEvent(cmdDspChenge, &CommandButton::Click, [this] { cmdDspChenge_Click(); });
    onEvent(comOk, &CommandButton::Click, [this] { comOk_Click(); });
    onEvent(comCancel, &CommandButton::Click, [this] { comCancel_Click(); });
}

}
