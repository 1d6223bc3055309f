// The working data of the display order dialog: the rules in their old order, the rules
// already taken in their new order, and the moves between the two.
//
// FilterBefore starts as a copy of gFilterRule. Moving a rule leaves an empty entry
// there. Sorting rules come first, so row r of a list of them is entry r - 1.
//
// Two quirks are kept: what the second list shows of a single move, and how many
// entries take() replaces. See there.
#pragma once
#include "filter/filter_rules.h"

#include <functional>

namespace tolvek {

struct FilterOrder {
    using ShowRow = std::function<void(Int16 row, const FilterRule& shown)>;

    CheckedArray<FilterRule, 256> FilterBefore;
    CheckedArray<FilterRule, 256> FilterAfter;
    Int16 AfterRow = 1; // the next row of the second list
    Int16 BeforeRow;    // the row last clicked in the first one, 0 for none

    // Copies gFilterRule and clears the new order. One entry past the count is included
    // on purpose, so that the entry after the last rule is reset as well. With 256
    // rules that is error 9.
    void reset();

    // True when BeforeRow is a row whose rule hasn't been moved yet.
    bool canMoveOne() const;
    // Appends the rule at BeforeRow to the new order and blanks its old entry. Before
    // that, `show` gets the row for the second list. Kept quirk: only the title of that
    // row belongs to the moved rule; codes and condition are those of the old entry at
    // the new position. They agree only when rules are moved from the top down.
    void moveOne(const ShowRow& show);

    // Appends all remaining rules, in list order. Rules that don't sort are copied
    // without being shown and stay in the old order too, so a second call copies them
    // again.
    void moveAll(const ShowRow& show);

    // Copies the new order over entries 0 to `last` of gFilterRule.
    void take(int last) const;
};

}
