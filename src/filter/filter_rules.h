// The user's filter rules in memory, and how they are read and stored.
//
// Rule numbers give order and identity only while the rules are unchanged:
// tblFilter_UpDate assigns new ones each time. The size of the two arrays is the only
// limit on the number of rules; an index outside it is error 9 wherever it happens.
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

namespace tolvek {

// Default-constructed, it is the empty entry, which holds no rule.
struct FilterRule {
    Int16 No = 9999;
    Int16 TermsCode = 99;  // 0 to 5; even: whole text equal, odd: contained
    Int16 ActionCode = 99; // 0: sort into a view, 1: keep out at import
    Text Header;           // the display title
    Text Data;             // the condition
};

extern CheckedArray<FilterRule, 256> gFilterRule; // as last read, or being edited
extern Int16 gFilterRuleCnt;
extern CheckedArray<FilterRule, 256> gNonCopyRule; // the do-not-read rules, in reading order
extern Int16 gNonCopyRuleCnt;
// False while tblFilter_Get runs and after it failed: gFilterRule may then lack rules
// that the table has.
extern bool gFilterRulesWhole;

// The rule in the current row of gRs; fields are read by position.
FilterRule currentFilterRule();
// Sets entries 0 to 254 of gFilterRule to the empty entry. The last entry keeps its
// value, here as in every other list of rules.
void emptyFilterRules();

// Fills both arrays from tblFilter: sorting rules first, each group ordered by number.
// Overwrites the status lines. Reports its own failures. User input is held during its
// yields, since the count starts again at 0.
void tblFilter_Get();

// Replaces the contents of tblFilter by entries 0 to gFilterRuleCnt - 1, numbered in
// steps of 10. An entry without a header isn't written but uses up its number. Calls
// tblFilter_Get at the end. Reports its own failures; rows written until then stay.
// Does nothing unless gFilterRulesWhole: rules that aren't in memory would be lost.
void tblFilter_UpDate();

// Loads the rules from their text dump into the table and into memory, like the other
// loads of store/text_dump.h. The rules in memory are emptied first, except for entry
// 255 and gNonCopyRule. A record beyond the 256th is error 9, before its row is stored.
void tblFilter_Load();

}
