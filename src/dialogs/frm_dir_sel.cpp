#include "dialogs/frm_dir_sel.h"

#include "app/guard.h"
#include "app/settings.h"
#include "platform/forms/events.h"

namespace tolvek {

namespace {

// All in twips.
constexpr float kMargin = 240;
constexpr float kFormWidth = 6600;
constexpr float kInnerWidth = kFormWidth - 2 * kMargin;
constexpr float kLabelHeight = 240;
constexpr float kBoxHeight = 345;
constexpr float kGap = 105;
constexpr float kDriveTop = kMargin + kLabelHeight + kGap;
constexpr float kDirTop = kDriveTop + kBoxHeight + kGap;
constexpr float kDirHeight = 3600;
constexpr float kPathTop = kDirTop + kDirHeight + kGap;
constexpr float kButtonTop = kPathTop + kBoxHeight + kMargin;
constexpr float kButtonWidth = 1395;
constexpr float kButtonHeight = 390;
constexpr float kButtonGap = 150;

}

frmDir_Sel::frmDir_Sel() : Form(u"frmDir_Sel", BorderStyle::FixedDialog)
{
    setCaption(u"ＰｏｓｔＰｅｔ　フォルダー　設定");
    setWidth(kFormWidth + kFrameTwipsWide);
    setHeight(kButtonTop + kButtonHeight + kMargin + kFrameTwipsHigh);
}

void frmDir_Sel::buildControls()
{
    makeControls();
    placeControls();
    setDefaultButton(cmbOK);
    setCancelButton(cmbCancel);
    connectEvents();
}

void frmDir_Sel::makeControls()
{
    lbl_1 = new Label(*this, u"lbl_1",
                      u"受信フォルダ・送信フォルダの上のフォルダまでを指定してください");
    Div1 = new DriveListBox(*this, u"Div1");
    Dir1 = new DirListBox(*this, u"Dir1");
    txtPet_Dir = new TextBox(*this, u"txtPet_Dir");
    cmbOK = new CommandButton(*this, u"cmbOK", u"Ｏ　　Ｋ");
    cmbCancel = new CommandButton(*this, u"cmbCancel", u"Ｃａｎｃｅｌ");
    Div1->setSpokenName(u"ドライブ");
    Dir1->setSpokenName(u"フォルダー一覧");
    lbl_1->setBuddy(txtPet_Dir);
    int tab = 0;
    for (Control* control : {static_cast<Control*>(Div1), static_cast<Control*>(Dir1),
                             static_cast<Control*>(txtPet_Dir), static_cast<Control*>(cmbOK),
                             static_cast<Control*>(cmbCancel)})
        control->setTabIndex(tab++);
}

void frmDir_Sel::placeControls()
{
    const float cancelLeft = kFormWidth - kMargin - kButtonWidth;
    lbl_1->Move(kMargin, kMargin, kInnerWidth, kLabelHeight);
    Div1->Move(kMargin, kDriveTop, kInnerWidth, kBoxHeight);
    Dir1->Move(kMargin, kDirTop, kInnerWidth, kDirHeight);
    txtPet_Dir->Move(kMargin, kPathTop, kInnerWidth, kBoxHeight);
    cmbOK->Move(cancelLeft - kButtonGap - kButtonWidth, kButtonTop, kButtonWidth, kButtonHeight);
    cmbCancel->Move(cancelLeft, kButtonTop, kButtonWidth, kButtonHeight);
}

void frmDir_Sel::connectEvents()
{
    onEvent(Div1, &DriveListBox::Change, [this] { Div1_Change(); });
    onEvent(Dir1, &DirListBox::Change, [this] { Dir1_Change(); });
    onEvent(cmbOK, &CommandButton::Click, [this] { cmbOK_Click(); });
    onEvent(cmbCancel, &CommandButton::Click, [this] { cmbCancel_Click(); });
}

void frmDir_Sel::Form_Load()
{
    const ResumeNext on{u"Form_Load"};
    on([this] { CentreOnScreen(); });
    on([this] { txtPet_Dir->setText({}); });
    on([this] { Dir1->setPath(Div1->Drive()); });
}

void frmDir_Sel::Dir1_Change()
{
    txtPet_Dir->setText(Dir1->Path());
}

// If the volume was removed since the list was made, this is reported and the folder
// list stays where it was.
void frmDir_Sel::Div1_Change()
{
    const ResumeNext on{u"Div1_Change"};
    on([this] { Dir1->setPath(Div1->Drive()); });
    on([this] { gPostPetDir = Dir1->Path(); });
    on([this] { txtPet_Dir->setText(gPostPetDir); });
}

void frmDir_Sel::cmbOK_Click()
{
    gPostPetDir = txtPet_Dir->Text();
    Unload();
}

void frmDir_Sel::cmbCancel_Click()
{
    Unload();
}

}
