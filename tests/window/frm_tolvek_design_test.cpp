// The main window's design: every text to its last blank, every font, every position,
// and the menu tree.
#include "platform/forms/fonts.h"
#include "window/frm_tolvek.h"

#include <gtest/gtest.h>

#include <QMenu>
#include <QMenuBar>

#include <optional>
#include <vector>

namespace tolvek::test {
namespace {

// A window without events: its controls are as they were built.
class DesignedWindow : public frmTolvek {
protected:
    void Form_Resize() override {}
};

class FrmTolvekDesignTest : public ::testing::Test {
protected:
    void SetUp() override { form.Load(); }
    DesignedWindow form;
};

struct ControlDesign {
    Control* control;
    TextView name;
    std::optional<Text> caption;
    TextView toolTip;
    float left, top, width, height;
    int tab;
    TextView font; // empty: set at run time
    float size;
};

std::optional<Text> captionOf(Control& control)
{
    if (auto* button = dynamic_cast<CommandButton*>(&control)) return button->Caption();
    if (auto* label = dynamic_cast<Label*>(&control)) return label->Caption();
    if (auto* text = dynamic_cast<MultiLineTextBox*>(&control)) return text->Text();
    return std::nullopt;
}

TEST_F(FrmTolvekDesignTest, EveryControlHasItsWordsItsPlaceAndItsFace)
{
    const TextView pMincho = u"ＭＳ Ｐ明朝", mincho = u"ＭＳ 明朝", gothic = u"ＭＳ ゴシック";
    const ControlDesign table[] = {
        {form.comMailRead, u"comMailRead", u"PostPet Mail Read", u"PostPetからメールを読み込みます",
         60, 90, 1545, 312, 0, pMincho, 9},
        {form.cmdAddrDel, u"cmdAddrDel", u"アドレス　削　除", u"選択されているアドレスを削除します",
         1620, 90, 1455, 312, 1, pMincho, 9},
        {form.comMailDel, u"comMailDel", u"メール　削　除", u"選択されているメールを削除します",
         3090, 90, 1455, 312, 2, pMincho, 9},
        {form.comSendMail, u"comSendMail", u"返　信", u"PostPetで返信メールが書けます", 4560, 90,
         885, 312, 11, pMincho, 9},
        {form.comEnd, u"comEnd", u"終　了", u"Tolvek を終了します", 5460, 90, 885, 312, 3, pMincho,
         9},
        {form.lblRecCount, u"lblRecCount", u"表示件数　：　9999 / 9999件", u"", 6600, 60, 3045, 315,
         7, pMincho, 12},
        {form.lblDate, u"lblDate", u"1999/ 12/ 31 12:30:15", u"", 9360, 90, 2235, 195, 8, mincho,
         9.75F},
        {form.lblNameOrAddr, u"lblNameOrAddr", u"アドレス　表示",
         u"クリックすると表示を切り替えます", 96, 480, 2472, 312, 9, kDefaultFontName,
         kDefaultFontSize},
        {form.lstNameOrAddr, u"lstNameOrAddr", std::nullopt, u"", 36, 660, 2592, 6180, 4, gothic,
         9},
        {form.lstSubject, u"lstSubject", std::nullopt, u"", 2640, 480, 8955, 960, 5, gothic, 9},
        {form.lblHead, u"lblHead", u"", u"", 2700, 1500, 8895, 615, 10, mincho, 9},
        {form.txtMail, u"txtMail", u"Text1", u"", 2640, 2220, 8955, 4632, 6, u"", 0},
    };
    for (const ControlDesign& design : table) {
        Control& control = *design.control;
        SCOPED_TRACE(toUtf8(design.name));
        EXPECT_EQ(control.Name(), design.name);
        EXPECT_EQ(captionOf(control), design.caption);
        EXPECT_EQ(control.ToolTipText(), design.toolTip);
        EXPECT_EQ(control.Left(), design.left);
        EXPECT_EQ(control.Top(), design.top);
        EXPECT_EQ(control.Width(), design.width);
        EXPECT_EQ(control.Height(), design.height);
        EXPECT_EQ(control.TabIndex(), design.tab);
        if (design.font.empty()) continue;
        EXPECT_EQ(control.FontName(), design.font);
        EXPECT_EQ(control.FontSize(), design.size);
    }
    EXPECT_EQ(form.lblRecCount->TextAlignment(), Alignment::Right);
    EXPECT_EQ(form.lblNameOrAddr->TextAlignment(), Alignment::Centre);
    EXPECT_EQ(form.Timer1->Interval(), 1000);
    EXPECT_TRUE(form.txtMail->Locked());
}

TEST_F(FrmTolvekDesignTest, TheWindowItsButtonsAndItsLabelsAreLightBlue)
{
    constexpr Colour lightBlue = 0x00FFC0C0;
    EXPECT_EQ(form.Caption(), u"PostPet Mail 表示");
    EXPECT_EQ(form.BackColor(), lightBlue);
    for (const Control* control : std::initializer_list<Control*>{
             form.comMailRead, form.cmdAddrDel, form.comMailDel, form.comSendMail, form.comEnd,
             form.lblRecCount, form.lblDate, form.lblNameOrAddr, form.lblHead})
        EXPECT_EQ(control->BackColor(), lightBlue) << toUtf8(control->Name());
}

// Indented by two blanks for each level below the bar.
void listMenu(const QList<QAction*>& entries, int level, std::vector<std::string>& lines)
{
    for (const QAction* entry : entries) {
        const QString words = entry->isSeparator() ? QStringLiteral("-") : entry->text();
        lines.push_back(std::string(static_cast<std::size_t>(level) * 2, ' ') +
                        entry->objectName().toStdString() + ": " + words.toStdString());
        if (entry->menu()) listMenu(entry->menu()->actions(), level + 1, lines);
    }
}

TEST_F(FrmTolvekDesignTest, TheMenusStandInTheirOrder)
{
    const std::vector<std::string> expected{
        "memFile: ファイル",
        "  memDBSupport: ＤＢサポート",
        "    memExport: エクスポート",
        "    memInport: インポート",
        "    memSp1: -",
        "    memDBEdit: ＤＢ再作成",
        "  memsp2: -",
        "  memEnd: 終了",
        "memBackUp: バックアップ",
        "  memBackUp_FileEdit: ファイル作成",
        "  memsp5: -",
        "  memNomalDisp: 通常表示",
        "  memBackUp_FileSelect: ファイル 選択",
        "memOption: オプション",
        "  memFriend: おともだち帳",
        "    memFriend_F: おともだち順に表示",
        "    memFriend_P: Pet順",
        "    memFriend_A: ﾒｰﾙｱﾄﾞﾚｽ順",
        "  memAddressAdd: おともだち帳に追加",
        "  memFriendEd: 名前 の 再設定",
        "  memsp3: -",
        "  memFilter: フィルター設定",
        "  memFilterGo: フィルター実行",
        "  memsp4: -",
        "  memEnv: 環境設定",
        "  memNameOrAddr: 表示切替え",
        "memHelp_Top: ヘルプ",
        "  memHelp: Tolvek ヘルプ",
        "  memsp999: -",
        "  memVar: バージョン情報",
    };
    std::vector<std::string> lines;
    listMenu(form.menuBar().actions(), 0, lines);
    EXPECT_EQ(lines, expected);
}

}
}
