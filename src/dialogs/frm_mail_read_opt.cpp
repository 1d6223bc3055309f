#include "dialogs/frm_mail_read_opt.h"

#include "app/settings.h"
#include "app/state.h"
#include "platform/forms/events.h"
#include "platform/runtime/msg_box.h"

#include <algorithm>

namespace tolvek {

namespace {

// Element 0 is the main box of a side, whose name is also the frame's. The drawers are
// the same on both sides, as far as a side has them.
constexpr TextView kSendCaption = u"送信メール";
constexpr TextView kRecievCaption = u"受信メール";
// Captions only; the file names are in import/mail_box_read.cpp.
constexpr TextView kDrawers[] = {
    u"ピンクの引出し", u"黄色の引出し", u"紫の引出し",   u"緑色の引出し", u"黒の引出し",
    u"水色の引出し",   u"赤の引出し",   u"茶色の引出し", u"橙色の引出し",
};

// All in twips. The boxes of a frame are in columns of five.
constexpr float kMargin = 240;
constexpr float kFrameTop = 780;
constexpr float kFrameHeight = 2445;
constexpr float kSendWidth = 2400;
constexpr float kRecievLeft = kMargin + kSendWidth + kMargin;
constexpr float kRecievWidth = 4440;
constexpr float kFormWidth = kRecievLeft + kRecievWidth + kMargin;
constexpr int kRows = 5;
constexpr float kBoxLeft = 240;
constexpr float kBoxTop = 360;
constexpr float kBoxWidth = 1920;
constexpr float kBoxHeight = 300;
constexpr float kColumnStep = 2100;
constexpr float kRowStep = 390;
constexpr float kButtonTop = kFrameTop + kFrameHeight + kMargin;
constexpr float kButtonWidth = 1395;
constexpr float kButtonHeight = 390;
constexpr float kButtonGap = 150;

Text elementName(TextView array, int index)
{
    return Text(array) + u"(" + decimal(index) + u")";
}

template <std::size_t N>
void buildBoxes(Frame& frame, TextView name, TextView first, CheckedArray<CheckBox*, N>& boxes)
{
    for (int i = 0; i < boxes.size(); ++i) {
        const int column = i / kRows;
        const int row = i % kRows;
        boxes[i] = new CheckBox(frame, elementName(name, i), i == 0 ? first : kDrawers[i - 1]);
        boxes[i]->Move(kBoxLeft + static_cast<float>(column) * kColumnStep,
                       kBoxTop + static_cast<float>(row) * kRowStep, kBoxWidth, kBoxHeight);
    }
}

// Values are copied unchanged in both directions, also unknown ones.
template <std::size_t N>
void showOptions(const CheckedArray<Int16, 17>& options, CheckedArray<CheckBox*, N>& boxes)
{
    for (int i = 0; i < boxes.size(); ++i)
        boxes[i]->setValue(options[i]);
}

template <std::size_t N>
void takeOptions(const CheckedArray<CheckBox*, N>& boxes, CheckedArray<Int16, 17>& options)
{
    for (int i = 0; i < boxes.size(); ++i)
        options[i] = boxes[i]->Value();
}

// Any value but 0 counts as ticked.
bool isEmpty(const CheckBox* box)
{
    return box->Value() == 0;
}

}

frmMailReadOpt::frmMailReadOpt() : Form(u"frmMailReadOpt", BorderStyle::FixedDialog)
{
    setCaption(u"ＰｏｓｔＰｅｔ フォルダー");
    setWidth(kFormWidth + kFrameTwipsWide);
    setHeight(kButtonTop + kButtonHeight + kMargin + kFrameTwipsHigh);
}

void frmMailReadOpt::buildControls()
{
    lblPostPetFlder = new Label(*this, u"lblPostPetFlder");
    lblPostPetFlder->Move(kMargin, kMargin, kFormWidth - 2 * kMargin, kFrameTop - kMargin - 120);
    lblPostPetFlder->setWordWrap(true);
    buildFrames();
    buildButtons();
    int tab = 0;
    for (CheckBox* box : Chk_Send_Opt)
        box->setTabIndex(tab++);
    for (CheckBox* box : Chk_Reciev_Opt)
        box->setTabIndex(tab++);
    cmbMail_Ok->setTabIndex(tab++);
    cmbMail_Cancel->setTabIndex(tab);
}

void frmMailReadOpt::buildFrames()
{
    Frame2 = new Frame(*this, u"Frame2", kSendCaption);
    Frame2->Move(kMargin, kFrameTop, kSendWidth, kFrameHeight);
    buildBoxes(*Frame2, u"Chk_Send_Opt", kSendCaption, Chk_Send_Opt);
    Frame1 = new Frame(*this, u"Frame1", kRecievCaption);
    Frame1->Move(kRecievLeft, kFrameTop, kRecievWidth, kFrameHeight);
    buildBoxes(*Frame1, u"Chk_Reciev_Opt", kRecievCaption, Chk_Reciev_Opt);
}

void frmMailReadOpt::buildButtons()
{
    const float cancelLeft = kFormWidth - kMargin - kButtonWidth;
    cmbMail_Ok = new CommandButton(*this, u"cmbMail_Ok", u"O K");
    cmbMail_Ok->Move(cancelLeft - kButtonGap - kButtonWidth, kButtonTop, kButtonWidth,
                     kButtonHeight);
    cmbMail_Cancel = new CommandButton(*this, u"cmbMail_Cancel", u"Cancel");
    cmbMail_Cancel->Move(cancelLeft, kButtonTop, kButtonWidth, kButtonHeight);
    setDefaultButton(cmbMail_Ok);
    setCancelButton(cmbMail_Cancel);
    onEvent(cmbMail_Ok, &CommandButton::Click, [this] { cmbMail_Ok_Click(); });
    onEvent(cmbMail_Cancel, &CommandButton::Click, [this] { cmbMail_Cancel_Click(); });
}

void frmMailReadOpt::Form_Load()
{
    CentreOnScreen();
    showOptions(gSendMailReadOption, Chk_Send_Opt);
    showOptions(gRecievMailReadOption, Chk_Reciev_Opt);
    lblPostPetFlder->setCaption(u"PostPet 参照フォルダー : " + gPostPetDir);
    // A path longer than two lines is cut.
    lblPostPetFlder->setToolTipText(gPostPetDir);
}

// The close box counts as Cancel; otherwise the read would start.
void frmMailReadOpt::Form_QueryUnload(UnloadMode mode)
{
    if (mode == UnloadMode::ControlMenu) gMailReadCancel = -1;
}

bool frmMailReadOpt::nothingTicked() const
{
    return std::all_of(Chk_Send_Opt.begin(), Chk_Send_Opt.end(), isEmpty) &&
           std::all_of(Chk_Reciev_Opt.begin(), Chk_Reciev_Opt.end(), isEmpty);
}

void frmMailReadOpt::cmbMail_Ok_Click()
{
    if (nothingTicked()) {
        MsgBox(u"最低１ヶ所には、チェックを付けて下さい。");
        return;
    }
    takeOptions(Chk_Send_Opt, gSendMailReadOption);
    takeOptions(Chk_Reciev_Opt, gRecievMailReadOption);
    gMailReadCancel = 0;
    Unload();
}

void frmMailReadOpt::cmbMail_Cancel_Click()
{
    gMailReadCancel = -1;
    Unload();
}

}
