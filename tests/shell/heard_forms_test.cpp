// What a screen reader finds in every form.
#include "every_form.h"
#include "support/focus_events.h"
#include "support/screen_driver.h"

#include <QMenu>

#include <map>

namespace tolvek::test {

namespace {

class HeardFormsTest : public EveryForm {};

using Names = std::map<std::string, std::string>; // by the control's own name

// The controls whose name isn't their caption.
const std::map<Text, Names> kNames = {
    {u"frmSplash", {{"fraMainFrame", "Tolvek"}}},
    {u"frmTolvek",
     {{"lstNameOrAddr", "アドレス　表示"}, {"lstSubject", "件名一覧"}, {"txtMail", "本文"}}},
    {u"frmFilter",
     {{"txtFilterHeader", "表示タイトル"},
      {"txtTerms", "フィルター条件"},
      {"grdFilter", "フィルター一覧"},
      {"Frame1", "条　件"},
      {"Frame2", "ルール"},
      {"Frame3", "アクション"}}},
    {u"frmFilterDspChenge",
     {{"Frame1", "変更前　表示順序"},
      {"grdFilterBefore", "変更前　表示順序"},
      {"Frame2", "変更後　表示順序"},
      {"grdFilterAfter", "変更後　表示順序"}}},
    {u"frmFriend",
     {{"frmFriendEd", "編集"},
      {"txtPetKind", "ペットの種類"},
      {"txtPetName", "ペットの名前"},
      {"txtName", "飼い主の名前"},
      {"txtAddress", "飼い主のメールアドレス"},
      {"grdFriend", "おともだち帳"}}},
    {u"frmOption",
     {{"txtDisp_PetDir", "ＰｏｓｔＰｅｔ　フォルダー"},
      {"txtMy_Handle", "ハンドル名"},
      {"txtMy_Address", "メールアドレス"},
      {"txtPetName", "ペットの名前"}}},
    {u"frmDir_Sel",
     {{"Dir1", "フォルダー一覧"},
      {"txtPet_Dir", "受信フォルダ・送信フォルダの上のフォルダまでを指定してください"}}},
    {u"frmMailReadOpt", {{"Frame1", "受信メール"}, {"Frame2", "送信メール"}}},
    {u"frmBackUpFile", {{"lstBackUpFile", "バックアップ ファイル一覧"}}},
};

std::vector<QWidget*> controlsOf(const Form& shown)
{
    std::vector<QWidget*> controls;
    for (QWidget* widget : shown.client().findChildren<QWidget*>())
        if (dynamic_cast<Control*>(widget)) controls.push_back(widget);
    return controls;
}

bool needsName(const QWidget& control)
{
    if (qobject_cast<const Line*>(&control)) return false;
    const auto* label = qobject_cast<const Label*>(&control);
    return !label || !label->Caption().empty();
}

TEST_F(HeardFormsTest, EveryFormIsAWindowOrADialogWithItsTitle)
{
    atEveryForm([](Form& shown) {
        QAccessibleInterface& window = heard(*shown.window());
        const bool isWindow = shown.Name() == u"frmTolvek" || shown.Name() == u"frmSplash" ||
                              shown.Name() == u"frmFriend"; // not shown modally here
        EXPECT_EQ(window.role(), isWindow ? QAccessible::Window : QAccessible::Dialog);
        EXPECT_EQ(spokenName(window), toUtf8(shown.Caption()));
    });
}

TEST_F(HeardFormsTest, EveryControlHasItsName)
{
    atEveryForm([](Form& shown) {
        for (QWidget* control : controlsOf(shown)) {
            if (!needsName(*control)) continue;
            const std::string name = spokenName(heard(*control));
            EXPECT_NE(name, "") << control->objectName().toStdString();
            if (const auto* button = qobject_cast<QAbstractButton*>(control)) {
                EXPECT_EQ(name, button->text().remove(u'&').toStdString());
            }
        }
        const auto names = kNames.find(shown.Name());
        if (names == kNames.end()) return;
        for (const auto& [control, name] : names->second)
            EXPECT_EQ(spokenName(heard(*shown.control(fromUtf8(control)))), name);
    });
}

TEST_F(HeardFormsTest, TheListOfDrivesIsDescribedSinceItIsCalledByItsChoice)
{
    frmDir_Sel chooser;
    chooser.Show();
    EXPECT_EQ(heard(*chooser.Div1).text(QAccessible::Description), QStringLiteral("ドライブ"));
}

QAccessible::Role roleOf(const QWidget& control)
{
    if (qobject_cast<const CommandButton*>(&control)) return QAccessible::Button;
    if (qobject_cast<const CheckBox*>(&control)) return QAccessible::CheckBox;
    if (qobject_cast<const OptionButton*>(&control)) return QAccessible::RadioButton;
    if (qobject_cast<const ListBox*>(&control)) return QAccessible::List;
    if (qobject_cast<const DirListBox*>(&control)) return QAccessible::List;
    if (qobject_cast<const DriveListBox*>(&control)) return QAccessible::ComboBox;
    if (qobject_cast<const Grid*>(&control)) return QAccessible::Table;
    if (qobject_cast<const Frame*>(&control)) return QAccessible::Grouping;
    if (qobject_cast<const Line*>(&control)) return QAccessible::Separator;
    if (qobject_cast<const PictureBox*>(&control)) return QAccessible::Graphic;
    if (const auto* label = qobject_cast<const Label*>(&control))
        return label->Clickable() ? QAccessible::Button : QAccessible::StaticText;
    return QAccessible::EditableText;
}

TEST_F(HeardFormsTest, EveryControlHasItsRoleAndItsState)
{
    atEveryForm([](Form& shown) {
        for (QWidget* control : controlsOf(shown)) {
            QAccessibleInterface& item = heard(*control);
            SCOPED_TRACE(control->objectName().toStdString());
            EXPECT_EQ(item.role(), roleOf(*control));
            EXPECT_EQ(item.state().disabled, !control->isEnabled());
            EXPECT_EQ(item.state().invisible, !control->isVisible());
            control->setEnabled(false);
            EXPECT_TRUE(item.state().disabled);
            control->setEnabled(true);
            EXPECT_EQ(item.state().focusable,
                      control->focusPolicy() != Qt::NoFocus && control->isEnabled());
            if (auto* check = qobject_cast<CheckBox*>(control)) {
                EXPECT_EQ(item.state().checked, check->Value() != 0);
            }
        }
    });
}

TEST_F(HeardFormsTest, TheFocusedCellOfEveryGridIsTheOneThatEnterActsOn)
{
    atEveryForm([](Form& shown) {
        for (QWidget* control : controlsOf(shown)) {
            auto* grid = qobject_cast<Grid*>(control);
            if (!grid) continue;
            for (int row = 1; row < grid->Rows(); ++row)
                grid->setTextMatrix(row, 1, u"row " + decimal(row));
            grid->SetFocus();
            grid->setRow(1);
            key(*grid, Qt::Key_Home);
            grid->setCol(1);
            key(*grid, Qt::Key_Down);
            QAccessibleInterface* const cell = heard(*grid).focusChild();
            ASSERT_NE(cell, nullptr) << grid->objectName().toStdString();
            EXPECT_EQ(spokenName(*cell), "row " + std::to_string(grid->Row()));
            EXPECT_TRUE(cell->state().focused);
        }
    });
}

// The list keeps the focus throughout, or a reader would be led through other controls
// and back.
TEST_F(HeardFormsTest, AKeystrokeInAListIsOneFocusEventOnItsEntry)
{
    for (const TextView time : {u"101113", u"101114", u"101115"})
        store(mail(u"hanako@example.jp", u"taro@example.jp", time, u"20000215", time));
    form.Show();
    form.Timer1->setEnabled(false);
    form.window()->activateWindow();
    DoEventsNow();
    FocusEvents events;
    const auto expectOneEvent = [&](ListBox& list, Qt::Key pressed) {
        list.SetFocus();
        events.taken();
        key(list, pressed);
        EXPECT_EQ(events.taken(), std::vector{toUtf8(list.Text())});
    };
    expectOneEvent(*form.lstNameOrAddr, Qt::Key_Down);
    expectOneEvent(*form.lstSubject, Qt::Key_Home);
    expectOneEvent(*form.lstSubject, Qt::Key_Down);
}

TEST_F(HeardFormsTest, TheMenuKeyOpensTheOptionsBelowTheSubject)
{
    form.Show();
    form.lstSubject->SetFocus();
    key(*form.lstSubject, Qt::Key_Menu);
    EXPECT_TRUE(form.memOption->menu()->isVisible());
    EXPECT_EQ(form.memOption->menu()->pos(), form.lstSubject->viewport()->mapToGlobal(QPoint()));
    form.memOption->menu()->close();
    form.memOption->setEnabled(false);
    key(*form.lstSubject, Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_FALSE(form.memOption->menu()->isVisible());
}

}

}
