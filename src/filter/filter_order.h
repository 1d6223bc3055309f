// The display order dialog's working data: the rules in their old order, those
// taken so far in their new one, and the moves from one to the other.
//
// FilterBefore begins as a copy of gFilterRule; a rule that was moved leaves an
// empty entry there. Sorting rules stand first, so row r of a list of them is
// entry r - 1.
//
// What the second list shows of a single move, and how many entries take()
// replaces, is odd and kept: see each.
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

    // Copies gFilterRule and empties the new order, one entry past the count on
    // purpose, so that the one behind the last rule is reset as well. With 256
    // rules that is error 9.
    void reset();

    // Whether BeforeRow is a row whose rule wasn't moved yet.
    bool canMoveOne() const;
    // Puts the rule at BeforeRow behind the new order and blanks its old entry;
    // `show` gets the row for the second list before that. Only the title shown
    // is the moved rule's own: codes and condition are those of the old entry at
    // the new position, which is the same only from the top down.
    void moveOne(const ShowRow& show);

    // Appends all that is left, in list order. Rules that don't sort are copied
    // unseen and stay in the old order too, so a second call copies them again.
    void moveAll(const ShowRow& show);

    // The new order over the entries 0 to `last` of gFilterRule.
    void take(int last) const;
};

}
