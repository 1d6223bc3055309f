// The main window's controls and menus, as tables.
#include "window/frm_tolvek.h"

#include "app/guard.h"
#include "app/settings.h"
#include "platform/runtime/numbers.h"
#include "window/tips.h"

namespace tolvek {

namespace {

constexpr Colour kLightBlue = 0x00FFC0C0; // 0xBBGGRR
constexpr float kDesignWidth = 11745;
constexpr float kDesignHeight = 7404;

// The width left to the count label by the last button at the window's minimum width.
constexpr float kCountRoom = 2840;

struct Place {
    float left, top, width, height;
    int tab;
};

// What differs from button to button. Buttons never move.
struct ButtonDesign {
    CommandButton* frmTolvek::*button;
    TextView name, caption, tip;
    Place place;
};

constexpr ButtonDesign kButtons[] = {
    {&frmTolvek::comMailRead,
     u"comMailRead",
     u"PostPet Mail Read",
     u"PostPetからメールを読み込みます",
     {60, 90, 1545, 312, 0}},
    {&frmTolvek::cmdAddrDel,
     u"cmdAddrDel",
     u"アドレス　削　除",
     u"選択されているアドレスを削除します",
     {1620, 90, 1455, 312, 1}},
    {&frmTolvek::comMailDel,
     u"comMailDel",
     u"メール　削　除",
     u"選択されているメールを削除します",
     {3090, 90, 1455, 312, 2}},
    {&frmTolvek::comSendMail,
     u"comSendMail",
     u"返　信",
     u"PostPetで返信メールが書けます",
     {4560, 90, 885, 312, 11}},
    {&frmTolvek::comEnd, u"comEnd", u"終　了", u"Tolvek を終了します", {5460, 90, 885, 312, 3}},
};

struct LabelDesign {
    Label* frmTolvek::*label;
    TextView name, caption, font;
    float size;
    Alignment alignment;
    Place place;
};

constexpr LabelDesign kLabels[] = {
    {&frmTolvek::lblRecCount,
     u"lblRecCount",
     u"表示件数　：　9999 / 9999件",
     u"ＭＳ Ｐ明朝",
     12,
     Alignment::Right,
     {6600, 60, 3045, 315, 7}},
    {&frmTolvek::lblDate,
     u"lblDate",
     u"1999/ 12/ 31 12:30:15",
     u"ＭＳ 明朝",
     9.75F,
     Alignment::Left,
     {9360, 90, 2235, 195, 8}},
    {&frmTolvek::lblNameOrAddr,
     u"lblNameOrAddr",
     u"アドレス　表示",
     kDefaultFontName,
     kDefaultFontSize,
     Alignment::Centre,
     {96, 480, 2472, 312, 9}},
    {&frmTolvek::lblHead,
     u"lblHead",
     u"",
     u"ＭＳ 明朝",
     9,
     Alignment::Left,
     {2700, 1500, 8895, 615, 10}},
};

struct MenuDesign {
    MenuEntry* frmTolvek::*entry;
    MenuEntry* frmTolvek::*parent; // null: on the bar
    TextView name, caption;
};

constexpr MenuEntry* frmTolvek::*kBar = nullptr;
constexpr MenuDesign kMenus[] = {
    {&frmTolvek::memFile, kBar, u"memFile", u"ファイル"},
    {&frmTolvek::memDBSupport, &frmTolvek::memFile, u"memDBSupport", u"ＤＢサポート"},
    {&frmTolvek::memExport, &frmTolvek::memDBSupport, u"memExport", u"エクスポート"},
    {&frmTolvek::memInport, &frmTolvek::memDBSupport, u"memInport", u"インポート"},
    {&frmTolvek::memSp1, &frmTolvek::memDBSupport, u"memSp1", u"-"},
    {&frmTolvek::memDBEdit, &frmTolvek::memDBSupport, u"memDBEdit", u"ＤＢ再作成"},
    {&frmTolvek::memsp2, &frmTolvek::memFile, u"memsp2", u"-"},
    {&frmTolvek::memEnd, &frmTolvek::memFile, u"memEnd", u"終了"},
    {&frmTolvek::memBackUp, kBar, u"memBackUp", u"バックアップ"},
    {&frmTolvek::memBackUp_FileEdit, &frmTolvek::memBackUp, u"memBackUp_FileEdit", u"ファイル作成"},
    {&frmTolvek::memsp5, &frmTolvek::memBackUp, u"memsp5", u"-"},
    {&frmTolvek::memNomalDisp, &frmTolvek::memBackUp, u"memNomalDisp", u"通常表示"},
    {&frmTolvek::memBackUp_FileSelect, &frmTolvek::memBackUp, u"memBackUp_FileSelect",
     u"ファイル 選択"},
    {&frmTolvek::memOption, kBar, u"memOption", u"オプション"},
    {&frmTolvek::memFriend, &frmTolvek::memOption, u"memFriend", u"おともだち帳"},
    {&frmTolvek::memFriend_F, &frmTolvek::memFriend, u"memFriend_F", u"おともだち順に表示"},
    {&frmTolvek::memFriend_P, &frmTolvek::memFriend, u"memFriend_P", u"Pet順"},
    {&frmTolvek::memFriend_A, &frmTolvek::memFriend, u"memFriend_A", u"ﾒｰﾙｱﾄﾞﾚｽ順"},
    {&frmTolvek::memAddressAdd, &frmTolvek::memOption, u"memAddressAdd", u"おともだち帳に追加"},
    {&frmTolvek::memFriendEd, &frmTolvek::memOption, u"memFriendEd", u"名前 の 再設定"},
    {&frmTolvek::memsp3, &frmTolvek::memOption, u"memsp3", u"-"},
    {&frmTolvek::memFilter, &frmTolvek::memOption, u"memFilter", u"フィルター設定"},
    {&frmTolvek::memFilterGo, &frmTolvek::memOption, u"memFilterGo", u"フィルター実行"},
    {&frmTolvek::memsp4, &frmTolvek::memOption, u"memsp4", u"-"},
    {&frmTolvek::memEnv, &frmTolvek::memOption, u"memEnv", u"環境設定"},
    {&frmTolvek::memNameOrAddr, &frmTolvek::memOption, u"memNameOrAddr", u"表示切替え"},
    {&frmTolvek::memHelp_Top, kBar, u"memHelp_Top", u"ヘルプ"},
    {&frmTolvek::memHelp, &frmTolvek::memHelp_Top, u"memHelp", u"Tolvek ヘルプ"},
    {&frmTolvek::memsp999, &frmTolvek::memHelp_Top, u"memsp999", u"-"},
    {&frmTolvek::memVar, &frmTolvek::memHelp_Top, u"memVar", u"バージョン情報"},
};

void put(Control& control, const Place& place)
{
    control.Move(place.left, place.top, place.width, place.height);
    control.setTabIndex(place.tab);
}

}

frmTolvek::frmTolvek() : Form(u"frmTolvek", BorderStyle::Sizable)
{
    setCaption(u"PostPet Mail 表示");
    setBackColor(kLightBlue);
    setWidth(kDesignWidth);
    setHeight(kDesignHeight);
}

// Labels are created first: where the layout rule lets controls overlap, the one
// created later is on top.
void frmTolvek::buildControls()
{
    buildMenus();
    buildLabels();
    buildButtons();
    buildLists();
    Line1 = new Line(*this, u"Line1");
    Timer1 = new Timer(*this, u"Timer1", 1000);
    explainCommands(*this);
}

void frmTolvek::buildLabels()
{
    for (const LabelDesign& design : kLabels) {
        auto* label = new Label(*this, design.name, design.caption);
        this->*design.label = label;
        label->setFontOf(design.font, design.size);
        label->setTextAlignment(design.alignment);
        label->setBackColor(kLightBlue);
        put(*label, design.place);
    }
    lblNameOrAddr->setClickable(true);
    lblNameOrAddr->setToolTipText(u"クリックすると表示を切り替えます");
    // At the window's minimum width the label starts inside the last button, and a
    // count of five digits is wider than the label. So its text may overflow to the
    // left, and clicks pass through to the button.
    lblRecCount->setMouseTransparent(true);
    lblRecCount->setOverflow(kCountRoom);
}

void frmTolvek::buildButtons()
{
    for (const ButtonDesign& design : kButtons) {
        auto* button = new CommandButton(*this, design.name, design.caption);
        this->*design.button = button;
        button->setToolTipText(design.tip);
        button->setFontOf(u"ＭＳ Ｐ明朝", 9);
        button->setBackColor(kLightBlue);
        put(*button, design.place);
    }
}

void frmTolvek::buildLists()
{
    lstNameOrAddr = new ListBox(*this, u"lstNameOrAddr");
    lstSubject = new ListBox(*this, u"lstSubject");
    for (ListBox* list : {lstNameOrAddr, lstSubject})
        list->setFontOf(u"ＭＳ ゴシック", 9);
    lblNameOrAddr->setBuddy(lstNameOrAddr);
    lstSubject->setSpokenName(u"件名一覧");
    put(*lstNameOrAddr, {36, 660, 2592, 6180, 4});
    put(*lstSubject, {2640, 480, 8955, 960, 5});
    txtMail = new MultiLineTextBox(*this, u"txtMail");
    // The caption of the design; it is emptied before the window is shown.
    txtMail->setText(u"Text1");
    txtMail->setLocked(true);
    txtMail->setSpokenName(u"本文");
    put(*txtMail, {2640, 2220, 8955, 4632, 6});
}

void frmTolvek::buildMenus()
{
    for (const MenuDesign& design : kMenus)
        this->*design.entry =
            design.parent == nullptr
                ? new MenuEntry(*this, design.name, design.caption)
                : new MenuEntry(*(this->*design.parent), design.name, design.caption);
    memHelp->setShortcut(Qt::Key_F1);
}

// In "0,1" the italic flag is followed by a comma, which the number conversion accepts
// as a thousands separator.
void applyMailFont(frmTolvek& form, const ResumeNext& on, FlagText flag)
{
    MultiLineTextBox& pane = *form.txtMail;
    const int length = flag == FlagText::WithComma ? 2 : 1;
    on([&] { pane.setFontSize(static_cast<float>(gMailTextFontSize)); });
    on([&] { pane.setFontName(gMailTextFont); });
    on([&] { pane.setFontBold(toInt16(mid(gMailTextFontStyle, 3, length)) != 0); });
    on([&] { pane.setFontItalic(toInt16(mid(gMailTextFontStyle, 1, length)) != 0); });
}

}
