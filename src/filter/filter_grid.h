// The grid of rules as the filter editor and the display order dialog have it:
// title, rule, action, condition, under a fixed row of headings.
//
// All of these move Row or Col, since that is how cells are reached. The row on
// which a grid is left counts: the display order dialog checks up to it.
#pragma once
#include "filter/filter_rules.h"
#include "platform/forms/grid.h"

namespace tolvek {

inline constexpr int kFilterCols = 4;
inline constexpr GridDesign kFilterGridDesign{2, kFilterCols, 1, 0};

using FilterGridWidths = float[kFilterCols]; // twips

void setFilterWidths(Grid& grid, const FilterGridWidths& widths);
void setFilterHeadings(Grid& grid); // leaves Row on the headings

// Into the row at Row; codes as plain digits.
void setFilterRow(Grid& grid, const FilterRule& rule);
void blankFilterRow(Grid& grid);

// The row is made the last one, and Row set on it.
void appendFilterRow(Grid& grid, int row, const FilterRule& rule);

}
