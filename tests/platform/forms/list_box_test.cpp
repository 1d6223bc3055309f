#include "platform/forms/events.h"
#include "platform/forms/list_box.h"
#include "platform/runtime/do_events.h"
#include "support/errors.h"
#include "support/screen_driver.h"
#include "test_form.h"

#include <QStyledItemDelegate>

#include <gtest/gtest.h>

#include <algorithm>

namespace tolvek::test {

namespace {

class ListBoxTest : public testing::Test {
protected:
    ListBoxTest() : list(form.add<ListBox>(u"lstSubject"))
    {
        list.Move(0, 0, 6000, 6000);
        onEvent(&list, &ListBox::Click, [this] { clicks.push_back(list.ListIndex()); });
        onEvent(&list, &ListBox::RightButton, [this](const QPoint&) { ++rightButtons; });
        form.Show();
    }
    void fill(int count)
    {
        for (int i = 0; i < count; ++i)
            list.setList(i, u"row " + decimal(i));
    }
    void clickBelow() { pressAt(*list.viewport(), {20, list.viewport()->height() - 3}); }
    bool isSelected(int index) const
    {
        return list.selectionModel()->isRowSelected(index, QModelIndex());
    }

    ShownForm form;
    ListBox& list;
    std::vector<int> clicks;
    int rightButtons = 0;
};

TEST_F(ListBoxTest, AFreshListHasNothingSelected)
{
    EXPECT_EQ(list.ListCount(), 0);
    EXPECT_EQ(list.ListIndex(), -1);
    EXPECT_EQ(list.Text(), u"");
    EXPECT_EQ(list.SelCount(), 0);
}

TEST_F(ListBoxTest, AssigningAtTheCountAppendsAndBelowItReplaces)
{
    list.setList(0, u"a");
    list.setList(1, u"b");
    list.setList(0, u"A");
    list.AddItem(u"c");
    EXPECT_EQ(list.ListCount(), 3);
    EXPECT_EQ(list.List(0), u"A");
    EXPECT_EQ(list.List(2), u"c");
}

TEST_F(ListBoxTest, IndicesOutsideHaveTheirErrors)
{
    fill(2);
    EXPECT_EQ(errorOf([&] { list.setList(3, u"x"); }), 5);
    EXPECT_EQ(errorOf([&] { list.setList(-1, u"x"); }), 5);
    EXPECT_EQ(errorOf([&] { static_cast<void>(list.List(2)); }), 9);
    EXPECT_EQ(errorOf([&] { static_cast<void>(list.List(-1)); }), 9);
    EXPECT_EQ(errorOf([&] { list.setListIndex(2); }), 380);
    EXPECT_EQ(errorOf([&] { list.setListIndex(-2); }), 380);
    EXPECT_TRUE(clicks.empty());
}

TEST_F(ListBoxTest, SettingListIndexSelectsAndFires)
{
    fill(3);
    list.setListIndex(1);
    EXPECT_EQ(clicks, std::vector{1});
    EXPECT_EQ(list.Text(), u"row 1");
    EXPECT_EQ(list.SelCount(), 1);
    EXPECT_TRUE(isSelected(1));
    list.setListIndex(-1);
    EXPECT_EQ(list.SelCount(), 0);
    EXPECT_FALSE(isSelected(1));
    EXPECT_EQ(clicks, std::vector{1});
}

TEST_F(ListBoxTest, OnePressIsOneEventOnTheSelectedEntryToo)
{
    fill(3);
    clickEntry(list, 2);
    clickEntry(list, 2);
    clickEntry(list, 0);
    EXPECT_EQ(clicks, (std::vector{2, 2, 0}));
    EXPECT_TRUE(isSelected(0));
}

TEST_F(ListBoxTest, DraggingIsNoEventAndMovesNothing)
{
    fill(5);
    QTest::mousePress(list.viewport(), Qt::LeftButton, {}, entryPos(list, 1));
    QTest::mouseMove(list.viewport(), entryPos(list, 3));
    QTest::mouseRelease(list.viewport(), Qt::LeftButton, {}, entryPos(list, 3));
    EXPECT_EQ(clicks, std::vector{1});
    EXPECT_EQ(list.ListIndex(), 1);
}

TEST_F(ListBoxTest, CtrlAndBlankNeverTakeTheSelectionAway)
{
    fill(3);
    clickEntry(list, 1);
    clickEntry(list, 1, Qt::LeftButton, Qt::ControlModifier);
    key(list, Qt::Key_Space);
    key(list, Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(list.ListIndex(), 1);
    EXPECT_TRUE(isSelected(1));
    EXPECT_EQ(clicks, (std::vector{1, 1}));
}

TEST_F(ListBoxTest, AClickBelowTheLastEntryChangesNothing)
{
    fill(2);
    clickEntry(list, 1);
    clickBelow();
    EXPECT_EQ(clicks, std::vector{1});
    EXPECT_EQ(list.ListIndex(), 1);
    EXPECT_TRUE(isSelected(1));
}

TEST_F(ListBoxTest, AClickOnAnEmptyListFiresWithNothingSelected)
{
    clickBelow();
    EXPECT_EQ(clicks, std::vector{-1});
}

TEST_F(ListBoxTest, TheRightButtonOnlyTellsWhereItWasPressed)
{
    fill(3);
    clickEntry(list, 0);
    clickEntry(list, 2, Qt::RightButton);
    EXPECT_EQ(rightButtons, 1);
    EXPECT_EQ(list.ListIndex(), 0);
    EXPECT_EQ(clicks, std::vector{0});
}

TEST_F(ListBoxTest, ArrowKeysMoveAndFireAndStopAtTheEnds)
{
    fill(3);
    list.SetFocus();
    EXPECT_EQ(list.ListIndex(), -1);
    for (const auto which :
         {Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_Up, Qt::Key_Home,
          Qt::Key_End, Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Left, Qt::Key_Right})
        key(list, which);
    EXPECT_EQ(clicks, (std::vector{0, 1, 2, 1, 0, 2, 0, 2, 1, 2}));
    EXPECT_TRUE(isSelected(2));
}

TEST_F(ListBoxTest, APageIsWhatTheListShows)
{
    fill(200);
    key(list, Qt::Key_PageDown);
    const int page = list.ListIndex();
    EXPECT_GT(page, 5);
    EXPECT_LE(page, list.viewport()->height() / list.sizeHintForRow(0));
    key(list, Qt::Key_PageUp);
    EXPECT_EQ(list.ListIndex(), 0);
}

TEST_F(ListBoxTest, ALetterGoesToTheNextEntryThatBeginsWithIt)
{
    for (const TextView name : {u"apple", u"beta", u"Bravo", u"cat"})
        list.AddItem(name);
    QTest::keyClicks(&list, QStringLiteral("bbbz"));
    EXPECT_EQ(clicks, (std::vector{1, 2, 1}));
}

TEST_F(ListBoxTest, ClearAndRefillsAreNoEvents)
{
    fill(3);
    clickEntry(list, 1);
    list.Clear();
    EXPECT_EQ(list.ListIndex(), -1);
    EXPECT_EQ(list.Text(), u"");
    fill(3);
    DoEventsNow();
    EXPECT_EQ(clicks, std::vector{1});
    EXPECT_EQ(list.SelCount(), 0);
    EXPECT_FALSE(isSelected(1));
}

TEST_F(ListBoxTest, ADisabledListHearsNoUserButItsCode)
{
    fill(3);
    list.setEnabled(false);
    clickEntry(list, 1);
    EXPECT_TRUE(clicks.empty());
    list.setListIndex(2);
    EXPECT_EQ(clicks, std::vector{2});
}

TEST_F(ListBoxTest, ASlotMayDisableItsListAndClearIt)
{
    fill(3);
    onEvent(&list, &ListBox::Click, [this] {
        list.setEnabled(false);
        DoEventsNow();
        list.Clear();
        list.setEnabled(true);
    });
    clickEntry(list, 1);
    EXPECT_EQ(clicks, std::vector{1});
    EXPECT_EQ(list.ListCount(), 0);
}

TEST_F(ListBoxTest, BothPressesOfADoubleClickAreEvents)
{
    fill(3);
    clickEntry(list, 1);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, entryPos(list, 1));
    EXPECT_EQ(list.ListIndex(), 1);
    EXPECT_TRUE(std::all_of(clicks.begin(), clicks.end(), [](int at) { return at == 1; }));
}

TEST_F(ListBoxTest, LineEndsInsideAnEntryArePaintedAsBlanks)
{
    list.AddItem(u"a\r\nb\nc");
    EXPECT_EQ(list.List(0), u"a\r\nb\nc");
    EXPECT_EQ(list.model()->index(0, 0).data().toString(), QStringLiteral("a b c"));
}

// Counts how often a row is measured or painted.
class CountingDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    mutable int measured = 0;
    mutable int painted = 0;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        ++measured;
        return QStyledItemDelegate::sizeHint(option, index);
    }
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override
    {
        ++painted;
        QStyledItemDelegate::paint(painter, option, index);
    }
};

TEST_F(ListBoxTest, ThirtyTwoThousandRowsCostNothingPerRowButTheirText)
{
    CountingDelegate delegate;
    list.setItemDelegate(&delegate);
    list.Clear();
    fill(32000);
    list.viewport()->grab();
    DoEventsNow();
    EXPECT_TRUE(list.uniformItemSizes());
    EXPECT_LT(delegate.measured, 200);
    EXPECT_LT(delegate.painted, 2000);
    EXPECT_TRUE(list.viewport()->findChildren<QWidget*>().isEmpty());
    clickEntry(list, 3);
    list.setListIndex(31999);
    EXPECT_EQ(clicks, (std::vector{3, 31999}));
    list.setItemDelegate(nullptr);
}

}

}
