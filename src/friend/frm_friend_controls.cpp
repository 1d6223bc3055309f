// The layout of the friend editor: the edit area above with two fields a row and the
// buttons below them, then the book, then the buttons that end the dialog.
#include "friend/frm_friend.h"
#include "platform/forms/events.h"

namespace tolvek {

namespace {

constexpr GridDesign kGridDesign{2, 6, 1, 1};
constexpr float kNumberWidth = 600;

// All in twips. Positions inside the frame count from the frame's corner.
constexpr float kLeastWidth = 9225;
constexpr float kLeastHeight = 5445;
constexpr float kMargin = 60;
constexpr float kFrameWidth = kLeastWidth - 200;
constexpr float kPadding = 180;

// The size of the table's fields. A longer text would make the import of the book fail
// at its row, and the rows below would be missing.
constexpr int kFieldSize = 64;

constexpr float kLabelDrop = 75; // aligns a label's text with the box beside it
constexpr float kBoxHeight = 345;
constexpr float kRowStep = kBoxHeight + 90;
constexpr float kFirstRow = 165;
constexpr float kPetLabelWidth = 1260;
constexpr float kPetBoxWidth = 2100;
constexpr float kOwnerLeft = kPadding + kPetLabelWidth + kPetBoxWidth + 240;
constexpr float kOwnerLabelWidth = 2055;
constexpr float kOwnerBoxWidth = kFrameWidth - kPadding - kOwnerLeft - kOwnerLabelWidth;

constexpr float kButtonsTop = kFirstRow + 2 * kRowStep + 45;
constexpr float kButtonWidth = 1200;
constexpr float kButtonHeight = 345;
constexpr float kButtonStep = kButtonWidth + 120;
constexpr float kSendWidth = 1500;
constexpr float kFrameHeight = kButtonsTop + kButtonHeight + 150;

constexpr float kEndButtonWidth = 1395;
constexpr float kEndButtonHeight = 330;

struct Field {
    Label*& label;
    TextBox*& box;
    TextView labelName, boxName, caption, toolTip;
    float left, labelWidth, boxWidth;
    int row;
};

void buildField(Frame& frame, const Field& field)
{
    const float top = kFirstRow + static_cast<float>(field.row) * kRowStep;
    field.label = new Label(frame, field.labelName, field.caption);
    field.label->Move(field.left, top + kLabelDrop, field.labelWidth, kBoxHeight - kLabelDrop);
    field.box = new TextBox(frame, field.boxName);
    field.box->Move(field.left + field.labelWidth, top, field.boxWidth, kBoxHeight);
    field.label->setBuddy(field.box);
    field.box->setToolTipText(field.toolTip);
    field.box->setMaxLength(kFieldSize);
}

// `place` counts from the left.
CommandButton* buildEditButton(Frame& frame, TextView name, TextView caption, int place)
{
    auto* button = new CommandButton(frame, name, caption);
    button->Move(kPadding + static_cast<float>(place) * kButtonStep, kButtonsTop, kButtonWidth,
                 kButtonHeight);
    return button;
}

}

// A menu bar would leave no room for the buttons at the bottom, so the form has a title
// only.
frmFriend::frmFriend() : Form(u"frmFriend", BorderStyle::Sizable)
{
    setCaption(u"おともだち帳 編集");
    setTitleOnly();
    setWidth(kLeastWidth);
    setHeight(kLeastHeight);
}

void frmFriend::buildControls()
{
    frmFriendEd = new Frame(*this, u"frmFriendEd");
    frmFriendEd->setWidth(kFrameWidth);
    frmFriendEd->setHeight(kFrameHeight);
    frmFriendEd->setSpokenName(u"編集");
    buildEditArea();
    buildEditButtons();
    grdFriend = new Grid(*this, u"grdFriend", kGridDesign);
    grdFriend->setSpokenName(u"おともだち帳");
    grdFriend->setColWidth(0, kNumberWidth);
    grdFriend->setAllowColumnResize(true);
    buildBottom();
    setTabOrder();
    connectEvents();
}

void frmFriend::buildEditArea()
{
    const Field fields[] = {
        {Label1, txtPetKind, u"Label1", u"txtPetKind", u"ペットの種類",
         u"ペットの種類を入力してください", kPadding, kPetLabelWidth, kPetBoxWidth, 0},
        {Label2, txtPetName, u"Label2", u"txtPetName", u"ペットの名前",
         u"ペットの名前を入力してください", kPadding, kPetLabelWidth, kPetBoxWidth, 1},
        {Label3, txtName, u"Label3", u"txtName", u"飼い主の名前", u"飼い主の名前を入力してください",
         kOwnerLeft, kOwnerLabelWidth, kOwnerBoxWidth, 0},
        {Label4, txtAddress, u"Label4", u"txtAddress", u"飼い主のメールアドレス",
         u"飼い主の電子メールアドレスを入力してください", kOwnerLeft, kOwnerLabelWidth,
         kOwnerBoxWidth, 1},
    };
    for (const Field& field : fields)
        buildField(*frmFriendEd, field);
}

void frmFriend::buildEditButtons()
{
    cmdFriendAdd = buildEditButton(*frmFriendEd, u"cmdFriendAdd", u"追　加", 0);
    cmdFriendUp = buildEditButton(*frmFriendEd, u"cmdFriendUp", u"更　新", 1);
    cmdFriendDel = buildEditButton(*frmFriendEd, u"cmdFriendDel", u"削　除", 2);
    cmdFriendCan = buildEditButton(*frmFriendEd, u"cmdFriendCan", u"Cancel", 3);
    cmdSndMail = new CommandButton(*frmFriendEd, u"cmdSndMail", u"メールを出す");
    cmdSndMail->Move(kFrameWidth - kPadding - kSendWidth, kButtonsTop, kSendWidth, kButtonHeight);
    for (CommandButton* button : {cmdFriendAdd, cmdSndMail})
        button->setToolTipText(u"メールアドレスが空のときは、何も起きません。");
    for (CommandButton* button : {cmdFriendUp, cmdFriendDel})
        button->setToolTipText(
            u"表の行を選んでから押します。選ばれていないときは、何も起きません。");
}

void frmFriend::buildBottom()
{
    cmdOK = new CommandButton(*this, u"cmdOK", u"O　K");
    cmdCancel = new CommandButton(*this, u"cmdCancel", u"CANCEL");
    for (CommandButton* button : {cmdOK, cmdCancel}) {
        button->setWidth(kEndButtonWidth);
        button->setHeight(kEndButtonHeight);
    }
}

void frmFriend::setTabOrder()
{
    Control* const tabs[] = {txtPetKind,   txtPetName,  txtName,      txtAddress,
                             cmdFriendAdd, cmdFriendUp, cmdFriendDel, cmdFriendCan,
                             cmdSndMail,   grdFriend,   cmdOK,        cmdCancel};
    int tab = 0;
    for (Control* control : tabs)
        control->setTabIndex(tab++);
}

void frmFriend::connectEvents()
{
    onEvent(grdFriend, &Grid::Click, [this] { grdFriend_Click(); });
    onEvent(cmdFriendAdd, &CommandButton::Click, [this] { cmdFriendAdd_Click(); });
    onEvent(cmdFriendUp, &CommandButton::Click, [this] { cmdFriendUp_Click(); });
    onEvent(cmdFriendDel, &CommandButton::Click, [this] { cmdFriendDel_Click(); });
    onEvent(cmdFriendCan, &CommandButton::Click, [this] { leaveRow(); });
    onEvent(cmdSndMail, &CommandButton::Click,
            [this] { cmdSndMail_Click(*this, txtAddress->Text()); });
    onEvent(cmdOK, &CommandButton::Click, [this] { cmdOK_Click(); });
    onEvent(cmdCancel, &CommandButton::Click, [this] { cmdCancel_Click(); });
}

void frmFriend::FriendLayout()
{
    // Enforcing the minimum size resizes the form and enters this again.
    if (layoutBusy_ == -1) return;
    layoutBusy_ = -1;
    if (Width() < kLeastWidth) setWidth(kLeastWidth);
    if (Height() < kLeastHeight) setHeight(kLeastHeight);
    frmFriendEd->setLeft(kMargin);
    frmFriendEd->setTop(45);
    grdFriend->setLeft(kMargin);
    grdFriend->setWidth(Width() - 200);
    grdFriend->setTop(frmFriendEd->Top() + frmFriendEd->Height() + 30);
    grdFriend->setHeight(Height() - frmFriendEd->Height() - 900);
    cmdCancel->setTop(grdFriend->Top() + grdFriend->Height() + 75);
    cmdCancel->setLeft(Width() - cmdCancel->Width() - 600);
    cmdOK->setTop(cmdCancel->Top());
    cmdOK->setLeft(cmdCancel->Left() - cmdOK->Width() - 600);
    layoutBusy_ = 0;
}

}
