#include "filter/filter_order.h"

namespace tolvek {

namespace {

// An entry that was moved is blank, so a condition tells whether the rule is still
// there.
bool hasCondition(const FilterRule& rule)
{
    return !trim(rule.Data).empty();
}

}

void FilterOrder::reset()
{
    for (int i = 0; i <= gFilterRuleCnt; ++i) {
        FilterBefore[i] = gFilterRule[i];
        FilterAfter[i] = FilterRule{};
    }
}

bool FilterOrder::canMoveOne() const
{
    return BeforeRow > 0 && hasCondition(FilterBefore[BeforeRow - 1]);
}

void FilterOrder::moveOne(const ShowRow& show)
{
    FilterRule& moved = FilterBefore[BeforeRow - 1];
    FilterAfter[AfterRow - 1] = moved;
    FilterRule shown = FilterBefore[AfterRow - 1];
    // Kept quirk: only the title comes from the moved rule; see the header.
    shown.Header = moved.Header;
    show(AfterRow, shown);
    ++AfterRow;
    moved = FilterRule{};
}

void FilterOrder::moveAll(const ShowRow& show)
{
    Int16 row = AfterRow;
    for (int i = 0; i < gFilterRuleCnt; ++i) {
        if (!hasCondition(FilterBefore[i])) continue;
        FilterAfter[AfterRow - 1] = FilterBefore[i];
        // Rules that don't sort get an entry but no row, hence two counters: AfterRow
        // counts entries, `row` counts rows.
        if (FilterBefore[i].ActionCode == 0) {
            show(row, FilterAfter[row - 1]);
            FilterBefore[i] = FilterRule{};
            ++row;
        }
        ++AfterRow;
    }
}

void FilterOrder::take(int last) const
{
    for (int i = 0; i <= last; ++i)
        gFilterRule[i] = FilterAfter[i];
}

}
