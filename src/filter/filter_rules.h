// The user's filter rules in memory, and their road to and from the store.
//
// Rule numbers carry order and identity, not history: tblFilter_UpDate gives
// them out anew each time. The bound of the two arrays is the only bound on
// the number of rules; an index outside it is error 9 wherever it happens.
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

namespace tolvek {

// As constructed: the empty entry, which holds no rule.
struct FilterRule {
    Int16 No = 9999;
    Int16 TermsCode = 99;  // 0 to 5; even: whole text equal, odd: contained
    Int16 ActionCode = 99; // 0: sort into a view, 1: keep out at import
    Text Header;           // the display title
    Text Data;             // the condition
};

extern CheckedArray<FilterRule, 256> gFilterRule; // as last read, or being edited
extern Int16 gFilterRuleCnt;
extern CheckedArray<FilterRule, 256> gNonCopyRule; // those that don't sort, in reading order
extern Int16 gNonCopyRuleCnt;
// False while tblFilter_Get reads, and after a reading that failed: gFilterRule
// then lacks rules that the table has.
extern bool gFilterRulesWhole;

// The rule in the current row of gRs, its fields taken by position.
FilterRule currentFilterRule();
// Sets entries 0 to 254 of gFilterRule to the empty entry; the last one keeps
// what it held, here as in every list of rules.
void emptyFilterRules();

// Fills both arrays from tblFilter, sorting rules first, each group by number.
// Overwrites the status lines. Reports its own failures. Its yields keep the
// user's input back: the count begins at 0.
void tblFilter_Get();

// Writes entries 0 to gFilterRuleCnt - 1 as the whole of tblFilter, numbered
// by 10; an entry without a header isn't written but uses up its number. Ends
// by tblFilter_Get. Reports its own failures; what was written until then stays.
// Does nothing unless gFilterRulesWhole: rules that aren't in memory would be lost.
void tblFilter_UpDate();

}
