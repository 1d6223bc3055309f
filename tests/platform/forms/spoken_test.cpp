#include "platform/forms/spoken.h"

#include "platform/forms/frames.h"
#include "platform/forms/grid.h"
#include "platform/forms/label.h"
#include "platform/forms/list_box.h"
#include "platform/forms/text_box.h"
#include "platform/runtime/do_events.h"
#include "support/focus_events.h"
#include "support/screen_driver.h"
#include "test_form.h"

#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QTimer>

#include <gtest/gtest.h>

namespace tolvek::test {

namespace {

TEST(SpokenTest, AFormIsAWindowOrADialogOfItsTitle)
{
    TestForm main;
    main.setCaption(u"主");
    main.Show();
    EXPECT_EQ(heard(*main.window()).role(), QAccessible::Window);
    EXPECT_EQ(spokenName(heard(*main.window())), "主");
    TestForm dialog(u"frmDialog", BorderStyle::FixedDialog);
    dialog.Show();
    EXPECT_EQ(heard(*dialog.window()).role(), QAccessible::Dialog);
    EXPECT_FALSE(heard(*dialog.window()).state().modal);
}

TEST(SpokenTest, ASizableFormThatIsShownModallyIsADialog)
{
    TestForm form;
    form.Load();
    QTimer::singleShot(0, [&] {
        EXPECT_EQ(heard(*form.window()).role(), QAccessible::Dialog);
        EXPECT_TRUE(heard(*form.window()).state().modal);
        form.Unload();
    });
    form.ShowModal();
}

TEST(SpokenTest, AClickableLabelIsAButtonThatCanBePressed)
{
    ShownForm form;
    auto& label = form.add<Label>(u"lbl", u"アドレス　表示");
    label.setClickable(true);
    int clicks = 0;
    onEvent(&label, &Label::Click, [&] { ++clicks; });
    form.Show();
    QAccessibleInterface& button = heard(label);
    EXPECT_EQ(button.role(), QAccessible::Button);
    EXPECT_EQ(spokenName(button), "アドレス　表示");
    button.actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(clicks, 1);
    label.setEnabled(false);
    button.actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(clicks, 1);
}

TEST(SpokenTest, AControlIsCalledByItsLabelOrItsOwnName)
{
    ShownForm form;
    auto& label = form.add<Label>(u"lbl", u"ハンドル名");
    auto& box = form.add<TextBox>(u"txt");
    label.setBuddy(&box);
    auto& list = form.add<ListBox>(u"lst");
    list.setSpokenName(u"件名一覧");
    EXPECT_EQ(spokenName(heard(label)), "ハンドル名");
    EXPECT_EQ(heard(label).role(), QAccessible::StaticText);
    EXPECT_EQ(spokenName(heard(box)), "ハンドル名");
    EXPECT_EQ(spokenName(heard(list)), "件名一覧");
    label.setCaption(u"名前　表示");
    EXPECT_EQ(spokenName(heard(box)), "名前　表示");
}

TEST(SpokenTest, LinesAndPicturesAreWhatTheyAre)
{
    ShownForm form;
    EXPECT_EQ(heard(form.add<Line>(u"Line1")).role(), QAccessible::Separator);
    EXPECT_EQ(heard(form.add<PictureBox>(u"Image1")).role(), QAccessible::Graphic);
}

class SpokenGridTest : public testing::Test {
protected:
    SpokenGridTest()
        : other(form.add<TextBox>(u"txt")), grid(form.add<Grid>(u"grd", GridDesign{6, 3, 1, 1}))
    {
        grid.Move(0, 600, 7500, 4500);
        for (int row = 1; row < 6; ++row)
            for (int col = 1; col < 3; ++col)
                grid.setTextMatrix(row, col, decimal(row) + u"/" + decimal(col));
        form.Show();
        form.window()->activateWindow();
        DoEventsNow();
        other.SetFocus();
    }
    std::string focusedCell()
    {
        QAccessibleInterface* const cell = heard(grid).focusChild();
        return cell ? spokenName(*cell) : "none";
    }

    ShownForm form;
    TextBox& other;
    Grid& grid;
};

TEST_F(SpokenGridTest, TheFocusedCellIsTheOneAtRowAndCol)
{
    grid.setRow(5); // by code
    grid.SetFocus();
    EXPECT_EQ(focusedCell(), "5/1");
    key(grid, Qt::Key_Up);
    EXPECT_EQ(focusedCell(), "4/1");
    key(grid, Qt::Key_Right);
    EXPECT_EQ(focusedCell(), "4/2");
    clickCell(grid, 2, 1);
    EXPECT_EQ(focusedCell(), "2/1");
}

TEST_F(SpokenGridTest, AClickThatMovesTheCellItselfIsFollowed)
{
    onEvent(&grid, &Grid::Click, [this] { grid.setCol(1); });
    grid.SetFocus();
    clickCell(grid, 3, 2);
    EXPECT_EQ(focusedCell(), "3/1");
}

class SpokenEventsTest : public testing::Test {
protected:
    void show()
    {
        form.Show();
        form.window()->activateWindow();
        DoEventsNow();
    }
    ShownForm form;
};

TEST_F(SpokenEventsTest, AKeystrokeInAListIsOneFocusEventOnTheEntry)
{
    auto& list = form.add<ListBox>(u"lst");
    form.add<TextBox>(u"txt").Move(0, 6000, 1500, 300); // could take the focus meanwhile
    for (const TextView entry : {u"a", u"b", u"c"})
        list.AddItem(entry);
    // As in the main window: the list is off while its command runs.
    onEvent(&list, &ListBox::Click, [&] {
        form.KeepFocusDuring([&] { list.setEnabled(false); });
        DoEventsNow();
        form.KeepFocusDuring([&] { list.setEnabled(true); });
        form.SettleFocus();
    });
    show();
    list.SetFocus();
    FocusEvents events;
    for (const char* entry : {"a", "b", "c"}) {
        key(list, Qt::Key_Down);
        EXPECT_EQ(events.taken(), std::vector<std::string>{entry});
    }
}

TEST_F(SpokenEventsTest, AKeystrokeInAGridIsOneFocusEventOnTheCell)
{
    auto& grid = form.add<Grid>(u"grd", GridDesign{4, 2, 1, 0});
    grid.Move(0, 0, 7500, 4500);
    for (int row = 1; row < 4; ++row)
        grid.setTextMatrix(row, 0, decimal(row));
    show();
    grid.SetFocus();
    FocusEvents events;
    key(grid, Qt::Key_Down);
    EXPECT_EQ(events.taken(), std::vector<std::string>{"2"});
    key(grid, Qt::Key_Down);
    EXPECT_EQ(events.taken(), std::vector<std::string>{"3"});
}

class MenuKeysTest : public testing::Test {
protected:
    MenuKeysTest() : list(form.add<ListBox>(u"lst"))
    {
        list.Move(0, 0, 6000, 6000);
        onEvent(&list, &ListBox::RightButton, [this](const QPoint& pos) { asked.push_back(pos); });
        for (const TextView entry : {u"a", u"b"})
            list.AddItem(entry);
        for (const char* caption : {"一", "二"})
            form.menuBar().addMenu(QString::fromUtf8(caption))->addAction(QStringLiteral("entry"));
        form.Show();
        form.window()->activateWindow();
        DoEventsNow();
        list.SetFocus();
    }
    ~MenuKeysTest() override
    {
        while (QWidget* open = QApplication::activePopupWidget())
            open->close();
    }
    ShownForm form;
    ListBox& list;
    std::vector<QPoint> asked;
};

TEST_F(MenuKeysTest, TheMenuKeyAsksForTheMenuBelowTheSelectedEntry)
{
    list.setListIndex(1);
    const QRect entry = list.visualRect(list.model()->index(1, 0));
    key(list, Qt::Key_Menu);
    key(list, Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_EQ(asked, (std::vector{entry.bottomLeft(), entry.bottomLeft()}));
}

TEST_F(MenuKeysTest, WithoutASelectionTheMenuOpensInTheCorner)
{
    key(list, Qt::Key_Menu);
    EXPECT_EQ(asked, std::vector{QPoint(0, 0)});
}

TEST_F(MenuKeysTest, F10EntersTheMenuBarAtItsFirstMenuThatIsOn)
{
    const auto menus = form.menuBar().actions();
    menus[0]->setEnabled(false);
    key(list, Qt::Key_F10);
    EXPECT_EQ(form.menuBar().activeAction(), menus[1]);
    EXPECT_TRUE(menus[1]->menu()->isVisible());
}

TEST_F(MenuKeysTest, ShiftAndF10OpenTheMenuOfATextBox)
{
    auto& box = form.add<TextBox>(u"txt");
    box.show();
    key(box, Qt::Key_F10, Qt::ShiftModifier);
    box.SetFocus();
    key(box, Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_NE(QApplication::activePopupWidget(), nullptr);
}
}

}
