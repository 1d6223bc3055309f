// The settings dialog's controls, as tables.
#include "dialogs/frm_option.h"

namespace tolvek {

namespace {

// All in twips. The folder has a row of its own; the names are in two columns, labels
// and boxes.
constexpr float kMargin = 240;
constexpr float kFormWidth = 6840;
constexpr float kInnerWidth = kFormWidth - 2 * kMargin;
constexpr float kLabelHeight = 240;
constexpr float kBoxHeight = 345;
constexpr float kLabelDrop = 75; // aligns a label with the box beside it
constexpr float kDirTop = 510;
constexpr float kDirButtonWidth = 900;
constexpr float kDirWidth = kInnerWidth - kDirButtonWidth - 120;
constexpr float kExampleTop = 930;
constexpr float kNamesTop = 1410;
constexpr float kNameStep = 450;
constexpr float kNameLeft = 1890;
constexpr float kNameLabelWidth = kNameLeft - kMargin - 60;
constexpr float kNameWidth = kFormWidth - kNameLeft - kMargin;
constexpr float kFontTop = kNamesTop + 3 * kNameStep + 135;
constexpr float kFontStep = 270;
constexpr float kButtonTop = kFontTop + 3 * kFontStep + 240;
constexpr float kButtonWidth = 1395;
constexpr float kButtonHeight = 390;
constexpr float kCancelLeft = kFormWidth - kMargin - kButtonWidth;
constexpr float kOKLeft = kCancelLeft - 150 - kButtonWidth;

struct Place {
    float left, top, width, height;
};

constexpr Place nameLabel(int row)
{
    return {kMargin, kNamesTop + static_cast<float>(row) * kNameStep + kLabelDrop, kNameLabelWidth,
            kLabelHeight};
}

constexpr Place nameBox(int row)
{
    return {kNameLeft, kNamesTop + static_cast<float>(row) * kNameStep, kNameWidth, kBoxHeight};
}

constexpr Place fontLabel(int row)
{
    return {kNameLeft, kFontTop + static_cast<float>(row) * kFontStep, kNameWidth, kLabelHeight};
}

struct LabelDesign {
    Label* frmOption::*label;
    TextView name, caption;
    Place place;
};

constexpr LabelDesign kLabels[] = {
    {&frmOption::Label1,
     u"Label1",
     u"ＰｏｓｔＰｅｔ　フォルダー",
     {kMargin, kMargin, kInnerWidth, kLabelHeight}},
    {&frmOption::Label2,
     u"Label2",
     u"例）C:\\Program Files\\So-Net\\PostPet for Windows ver. 2.0",
     {kMargin, kExampleTop, kInnerWidth, kLabelHeight}},
    {&frmOption::Label3, u"Label3", u"ハンドル名", nameLabel(0)},
    {&frmOption::Label4, u"Label4", u"メールアドレス", nameLabel(1)},
    {&frmOption::Label5, u"Label5", u"ペットの名前", nameLabel(2)},
    {&frmOption::lblFont, u"lblFont", u"", fontLabel(0)},
    {&frmOption::lblFontStyle, u"lblFontStyle", u"", fontLabel(1)},
    {&frmOption::lblFontSize, u"lblFontSize", u"", fontLabel(2)},
};

struct TextBoxDesign {
    TextBox* frmOption::*box;
    TextView name, tip;
    Place place;
    int tab;
};

constexpr TextBoxDesign kTextBoxes[] = {
    {&frmOption::txtDisp_PetDir,
     u"txtDisp_PetDir",
     u"ＰｏｓｔＰｅｔをインストールしているフォルダーを指定します。",
     {kMargin, kDirTop, kDirWidth, kBoxHeight},
     0},
    {&frmOption::txtMy_Handle, u"txtMy_Handle", u"あなたの名前を入力してください。", nameBox(0), 2},
    {&frmOption::txtMy_Address, u"txtMy_Address", u"あなたの電子メールアドレスを指定してください。",
     nameBox(1), 3},
    {&frmOption::txtPetName, u"txtPetName", u"あなたの飼っているペットの名前を入力してください。",
     nameBox(2), 4},
};

struct ButtonDesign {
    CommandButton* frmOption::*button;
    TextView name, caption, tip;
    Place place;
    int tab;
};

constexpr ButtonDesign kButtons[] = {
    {&frmOption::cmbOpenPostPet,
     u"cmbOpenPostPet",
     u"参照",
     u"",
     {kMargin + kDirWidth + 120, kDirTop, kDirButtonWidth, kBoxHeight},
     1},
    {&frmOption::cmdFontSet,
     u"cmdFontSet",
     u"フォントセット",
     u"フォント設定画面を表示します。",
     {kMargin, kFontTop, kButtonWidth, kButtonHeight},
     5},
    {&frmOption::cmbOK,
     u"cmbOK",
     u"Ｏ　Ｋ",
     u"",
     {kOKLeft, kButtonTop, kButtonWidth, kButtonHeight},
     6},
    {&frmOption::cmbCancel,
     u"cmbCancel",
     u"Cancel",
     u"",
     {kCancelLeft, kButtonTop, kButtonWidth, kButtonHeight},
     7},
};

void put(Control& control, const Place& place)
{
    control.Move(place.left, place.top, place.width, place.height);
}

}

frmOption::frmOption() : Form(u"frmOption", BorderStyle::FixedDialog)
{
    setCaption(u"オプション");
    setWidth(kFormWidth + kFrameTwipsWide);
    setHeight(kButtonTop + kButtonHeight + kMargin + kFrameTwipsHigh);
}

void frmOption::buildControls()
{
    cmFont = {};
    buildLabels();
    buildTextBoxes();
    buildButtons();
    connectEvents();
}

void frmOption::buildLabels()
{
    for (const LabelDesign& design : kLabels) {
        this->*design.label = new Label(*this, design.name, design.caption);
        put(*(this->*design.label), design.place);
    }
}

void frmOption::buildTextBoxes()
{
    for (const TextBoxDesign& design : kTextBoxes) {
        auto* box = new TextBox(*this, design.name);
        this->*design.box = box;
        put(*box, design.place);
        box->setToolTipText(design.tip);
        box->setTabIndex(design.tab);
    }
    Label1->setBuddy(txtDisp_PetDir);
    Label3->setBuddy(txtMy_Handle);
    Label4->setBuddy(txtMy_Address);
    Label5->setBuddy(txtPetName);
}

void frmOption::buildButtons()
{
    for (const ButtonDesign& design : kButtons) {
        auto* button = new CommandButton(*this, design.name, design.caption);
        this->*design.button = button;
        put(*button, design.place);
        button->setToolTipText(design.tip);
        button->setTabIndex(design.tab);
    }
    setDefaultButton(cmbOK);
    setCancelButton(cmbCancel);
}

}
