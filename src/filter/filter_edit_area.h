// The rule in the filter editor's edit area, without its controls: what is missing, and
// the entry made of it.
//
// Banning ' and | keeps the SQL statement valid that stores a rule: the rule's texts
// are put into it unescaped.
#pragma once
#include "filter/filter_rules.h"

namespace tolvek {

inline constexpr int kNoneSet = -1; // no option button is set

struct FilterEditArea {
    Text Header;              // as typed
    int TermsCode = kNoneSet; // index of the option button that is set
    int ActionCode = kNoneSet;
    Text Data; // as typed
};

enum class EditFault { None, Untouched, Header, Terms, Action, Data, Special };

// The first fault of the area, in the order in which the user is asked for the fields.
// Special characters are searched in text mode, so their full-width forms are refused
// too.
EditFault editFault(const FilterEditArea& area);

// The message for a fault; empty for None and for an untouched area.
TextView faultMessage(EditFault fault);

// The message of a change when an array has no button set; empty when both have one.
TextView missingChoice(const FilterEditArea& area);

// The entry for gFilterRule: texts trimmed, No 0 until the rules are written.
FilterRule editedRule(const FilterEditArea& area);

}
