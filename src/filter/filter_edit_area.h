// The rule that stands in the filter editor's edit area, apart from its
// controls: what it lacks, and the entry that is made of it.
//
// The ban on ' and | keeps the statement valid by which a rule is written: a
// rule's texts go into it as they stand.
#pragma once
#include "filter/filter_rules.h"

namespace tolvek {

inline constexpr int kNoneSet = -1; // no button of an array of option buttons

struct FilterEditArea {
    Text Header;              // as typed
    int TermsCode = kNoneSet; // the option button that is set
    int ActionCode = kNoneSet;
    Text Data; // as typed
};

enum class EditFault { None, Untouched, Header, Terms, Action, Data, Special };

// The first thing that keeps the area from being a rule, in the order in which
// the user is asked for them. Special characters are looked for in text mode,
// so that their full-width forms are refused as well.
EditFault editFault(const FilterEditArea& area);

// What the user is told of it; nothing for None and for an untouched area.
TextView faultMessage(EditFault fault);

// What a change says when it finds an array without a button set.
TextView missingChoice(const FilterEditArea& area);

// The entry of gFilterRule: texts trimmed, No 0 until the rules are written.
FilterRule editedRule(const FilterEditArea& area);

}
