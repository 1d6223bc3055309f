#include "filter/filter_grid.h"

namespace tolvek {

namespace {

constexpr TextView kHeadings[kFilterCols] = {
    u"表示タイトル",
    u"ルール",
    u"アクション",
    u"フィルター条件",
};

void setCell(Grid& grid, int col, TextView text)
{
    grid.setCol(col);
    grid.setText(text);
}

}

void setFilterWidths(Grid& grid, const FilterGridWidths& widths)
{
    for (int col = 0; col < kFilterCols; ++col)
        grid.setColWidth(col, widths[col]);
}

void setFilterHeadings(Grid& grid)
{
    grid.setRow(0);
    for (int col = 0; col < kFilterCols; ++col)
        setCell(grid, col, kHeadings[col]);
}

void setFilterRow(Grid& grid, const FilterRule& rule)
{
    setCell(grid, 0, rule.Header);
    setCell(grid, 1, decimal(rule.TermsCode));
    setCell(grid, 2, decimal(rule.ActionCode));
    setCell(grid, 3, rule.Data);
}

void blankFilterRow(Grid& grid)
{
    for (int col = 0; col < kFilterCols; ++col)
        setCell(grid, col, {});
}

void appendFilterRow(Grid& grid, int row, const FilterRule& rule)
{
    grid.setRows(row + 1);
    grid.setRow(row);
    setFilterRow(grid, rule);
}

}
