// The grid of rules in the filter editor and in the display order dialog: title, rule,
// action, condition, below a fixed row of headings.
//
// All of these functions change Row or Col, since that is how cells are addressed. The
// final Row of a grid matters: the display order dialog checks the rows up to it.
#pragma once
#include "filter/filter_rules.h"
#include "platform/forms/grid.h"

namespace tolvek {

inline constexpr int kFilterCols = 4;
inline constexpr GridDesign kFilterGridDesign{2, kFilterCols, 1, 0};

using FilterGridWidths = float[kFilterCols]; // twips

void setFilterWidths(Grid& grid, const FilterGridWidths& widths);
void setFilterHeadings(Grid& grid); // leaves Row on the headings

// Writes to the current row; codes appear as plain digits.
void setFilterRow(Grid& grid, const FilterRule& rule);
void blankFilterRow(Grid& grid);

// Resizes the grid so that `row` is the last row, and makes it the current one.
void appendFilterRow(Grid& grid, int row, const FilterRule& rule);

}
