#include "platform/forms/events.h"
#include "platform/forms/grid.h"
#include "support/errors.h"
#include "support/screen_driver.h"
#include "test_form.h"

#include <QHeaderView>

#include <gtest/gtest.h>

namespace tolvek::test {

namespace {

class GridTest : public testing::Test {
protected:
    GridTest() : grid(form.add<Grid>(u"grdFriend", GridDesign{4, 3, 1, 1}))
    {
        grid.Move(0, 0, 7500, 4500);
        onEvent(&grid, &Grid::Click, [this] { clicks.emplace_back(grid.Row(), grid.Col()); });
        form.Show();
    }
    using Cell = std::pair<int, int>;
    ShownForm form;
    Grid& grid;
    std::vector<Cell> clicks;
};

TEST_F(GridTest, AFreshGridStandsOnItsFirstOrdinaryCell)
{
    EXPECT_EQ(grid.Row(), 1);
    EXPECT_EQ(grid.Col(), 1);
    auto& other = form.add<Grid>(u"grdFilter", GridDesign{2, 4, 1, 0});
    EXPECT_EQ(other.Row(), 1);
    EXPECT_EQ(other.Col(), 0);
    EXPECT_EQ(other.Rows(), 2);
    EXPECT_EQ(other.Cols(), 4);
}

TEST_F(GridTest, TextIsTheCellsAtRowAndCol)
{
    grid.setRow(2);
    grid.setCol(1);
    grid.setText(u" taro");
    grid.setRow(0);
    grid.setCol(0);
    grid.setText(u"heading");
    EXPECT_EQ(grid.Text(), u"heading");
    EXPECT_EQ(grid.TextMatrix(2, 1), u" taro");
    grid.setTextMatrix(3, 2, u"x");
    grid.setRow(3);
    grid.setCol(2);
    EXPECT_EQ(grid.Text(), u"x");
}

TEST_F(GridTest, RowAndColOutsideHaveTheirErrorsAndStay)
{
    for (const int bad : {-1, 4})
        EXPECT_EQ(errorOf([&] { grid.setRow(bad); }), 30009);
    for (const int bad : {-1, 3})
        EXPECT_EQ(errorOf([&] { grid.setCol(bad); }), 30010);
    EXPECT_EQ(errorOf([&] { static_cast<void>(grid.TextMatrix(4, 0)); }), 30009);
    EXPECT_EQ(errorOf([&] { grid.setTextMatrix(0, 3, u""); }), 30010);
    EXPECT_EQ(errorOf([&] { grid.setColWidth(3, 900); }), 30010);
    EXPECT_EQ(Cell(grid.Row(), grid.Col()), Cell(1, 1));
}

TEST_F(GridTest, CodeMayStandOnAFixedRow)
{
    grid.setRow(0);
    grid.setCol(0);
    EXPECT_EQ(Cell(grid.Row(), grid.Col()), Cell(0, 0));
}

TEST_F(GridTest, MoreRowsAreEmptyAndFewerAreCutAndRowStaysInside)
{
    grid.setTextMatrix(3, 1, u"last");
    grid.setRows(6);
    EXPECT_EQ(grid.TextMatrix(3, 1), u"last");
    EXPECT_EQ(grid.TextMatrix(5, 1), u"");
    grid.setRow(5);
    grid.setRows(3);
    EXPECT_EQ(grid.Row(), 2);
    grid.setRows(4);
    EXPECT_EQ(grid.TextMatrix(3, 1), u"");
    EXPECT_EQ(grid.Row(), 2);
    EXPECT_EQ(grid.Rows(), 4);
}

TEST_F(GridTest, ClearEmptiesFixedCellsTooAndKeepsTheRest)
{
    grid.setTextMatrix(0, 1, u"heading");
    grid.setTextMatrix(2, 2, u"cell");
    grid.setColWidth(1, 2500);
    grid.setRow(3);
    grid.Clear();
    EXPECT_EQ(grid.TextMatrix(0, 1), u"");
    EXPECT_EQ(grid.TextMatrix(2, 2), u"");
    EXPECT_EQ(grid.Rows(), 4);
    EXPECT_EQ(grid.Row(), 3);
    EXPECT_FLOAT_EQ(grid.ColWidth(1), 2500);
}

TEST_F(GridTest, AClickOnACellSetsBothAndThenFires)
{
    clickCell(grid, 3, 2);
    clickCell(grid, 3, 2);
    EXPECT_EQ(clicks, (std::vector<Cell>{{3, 2}, {3, 2}}));
}

TEST_F(GridTest, AClickOnAFixedCellOrBesideTheCellsDoesNothing)
{
    pressAt(*grid.horizontalHeader()->viewport(), {10, 5});
    pressAt(*grid.verticalHeader()->viewport(), {5, 10});
    pressAt(*grid.viewport(), {10, grid.viewport()->height() - 3});
    pressAt(*grid.viewport(), grid.cellRect(2, 1).center(), Qt::RightButton);
    EXPECT_TRUE(clicks.empty());
    EXPECT_EQ(Cell(grid.Row(), grid.Col()), Cell(1, 1));
}

TEST_F(GridTest, ArrowKeysMoveWithoutAnEventAndStayOnOrdinaryCells)
{
    for (const auto which : {Qt::Key_Up, Qt::Key_Left, Qt::Key_Down, Qt::Key_Right, Qt::Key_Right})
        key(grid, which);
    EXPECT_EQ(Cell(grid.Row(), grid.Col()), Cell(2, 2));
    key(grid, Qt::Key_PageDown);
    key(grid, Qt::Key_Home);
    EXPECT_EQ(Cell(grid.Row(), grid.Col()), Cell(3, 1));
    EXPECT_TRUE(clicks.empty());
}

TEST_F(GridTest, EnterAndSpaceOnACellAreAClick)
{
    key(grid, Qt::Key_Return);
    key(grid, Qt::Key_Space);
    EXPECT_EQ(clicks, (std::vector<Cell>{{1, 1}, {1, 1}}));
    grid.setRow(0);
    key(grid, Qt::Key_Return);
    EXPECT_EQ(clicks.size(), 2U);
}

TEST_F(GridTest, ADisabledGridHearsNoClick)
{
    grid.setEnabled(false);
    clickCell(grid, 2, 1);
    EXPECT_TRUE(clicks.empty());
}

TEST_F(GridTest, WidthsAreKeptInTwipsUntilTheUserDrags)
{
    grid.setColWidth(1, 2501);
    EXPECT_FLOAT_EQ(grid.ColWidth(1), 2501);
    EXPECT_EQ(grid.columnWidth(0), 167);
    grid.horizontalHeader()->resizeSection(0, 100); // what a drag does
    EXPECT_FLOAT_EQ(grid.ColWidth(1), 1500);
    EXPECT_FLOAT_EQ(grid.ColWidth(2), 960);
}

TEST_F(GridTest, TheFixedColumnHasAWidthToo)
{
    grid.setColWidth(0, 600);
    EXPECT_FLOAT_EQ(grid.ColWidth(0), 600);
    EXPECT_EQ(grid.verticalHeader()->width(), 40);
}

void dragBorder(Grid& grid)
{
    QWidget* header = grid.horizontalHeader()->viewport();
    const QPoint border(grid.columnWidth(0) - 1, header->height() / 2);
    QTest::mouseMove(header, border);
    QTest::mousePress(header, Qt::LeftButton, {}, border);
    QTest::mouseMove(header, border + QPoint(30, 0));
    QTest::mouseRelease(header, Qt::LeftButton, {}, border + QPoint(30, 0));
}

TEST_F(GridTest, ColumnsAreDraggedOnlyWhereItIsAllowed)
{
    grid.setColWidth(1, 1500);
    dragBorder(grid);
    EXPECT_FLOAT_EQ(grid.ColWidth(1), 1500);
    grid.setAllowColumnResize(true);
    dragBorder(grid);
    EXPECT_FLOAT_EQ(grid.ColWidth(1), 1950);
    EXPECT_TRUE(clicks.empty());
}

TEST_F(GridTest, RowsAreNeverDragged)
{
    EXPECT_EQ(grid.verticalHeader()->sectionResizeMode(0), QHeaderView::Fixed);
}

TEST_F(GridTest, ALargerFontMakesHigherRows)
{
    const int before = grid.rowHeight(0);
    grid.setFontSize(20);
    EXPECT_GT(grid.rowHeight(0), before);
}

TEST_F(GridTest, FixedCellsAreTheHeadersAndLineEndsAreBlanks)
{
    grid.setTextMatrix(0, 1, u"ペットの種類");
    grid.setTextMatrix(2, 0, u"2");
    grid.setTextMatrix(1, 1, u"a\r\nb");
    const QAbstractItemModel& model = *grid.model();
    EXPECT_EQ(model.headerData(0, Qt::Horizontal).toString(), QStringLiteral("ペットの種類"));
    EXPECT_EQ(model.headerData(1, Qt::Vertical).toString(), QStringLiteral("2"));
    EXPECT_EQ(model.index(0, 0).data().toString(), QStringLiteral("a b"));
    EXPECT_EQ(grid.TextMatrix(1, 1), u"a\r\nb");
}

TEST_F(GridTest, MoreColumnsKeepWhatIsThere)
{
    grid.setTextMatrix(1, 2, u"x");
    grid.setCols(5);
    EXPECT_EQ(grid.TextMatrix(1, 2), u"x");
    EXPECT_EQ(grid.TextMatrix(1, 4), u"");
    grid.setCol(4);
    grid.setCols(2);
    EXPECT_EQ(grid.Col(), 1);
}

TEST_F(GridTest, TheCellAtRowAndColIsMarked)
{
    const QRect cell = grid.cellRect(2, 1);
    const QImage before = grid.viewport()->grab(cell).toImage();
    grid.setRow(2);
    EXPECT_NE(grid.viewport()->grab(cell).toImage(), before);
}

TEST_F(GridTest, TheFocusMarksNoCellOfItsOwn)
{
    grid.setRow(3);
    grid.setCol(2);
    const QRect first = grid.cellRect(1, 1);
    const QImage before = grid.viewport()->grab(first).toImage();
    grid.window()->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(grid.window(), 60000));
    grid.SetFocus();
    key(grid, Qt::Key_Up);
    EXPECT_EQ(grid.viewport()->grab(first).toImage(), before);
}

}

}
