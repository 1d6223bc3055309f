// The filter results: tblFilterData lists, under the number of each sorting
// rule, every mail that the rule selects, with a copy of its heading.
//
// The table is thrown away and built anew in full each time. Rules that compare
// whole texts (codes 0, 2, 4) leave the selection to the engine; those that
// search inside texts (1, 3, 5) walk the whole of tblTolvek. What a rule finds
// here, what it keeps out at import and what deleting by it reaches are three
// different things on purpose; none is to be evened out with another.
//
// Everything yields after each row. Callers have the commands switched off.
#pragma once
#include "platform/dao/statement.h"
#include "platform/runtime/int16.h"

#include <cstdint>

namespace tolvek {

// tblFilterDt_Id of the next row. Runs on across all rules of one build.
extern std::int32_t gFilterDataId;

// Rebuilds the table from gFilterRule as it stands; callers see to it that the
// rules are current. Sets the status lines 3 and 4 for each rule. A rule that
// fails keeps the rows written so far, and the next one follows. Reports under
// "tblFilterData_Sel".
void tblFilterData_Sel();

// The statement of gFilterRule(index): mode 0 selects its mails, mode 1 deletes
// them. Empty for a rule without a header, for any other mode, and for
// deleting by a code that searches inside texts. Reports nothing itself.
void tblFilterData_SqlEdit(Int16 mode, Int16 index, Statement& sql);

// Each copies rows of `sql` (of mode 0) under the rule's number: all of them;
// or those in which a text is found, counting gFilterDataId on for the others
// too. A missing database is offered to be created. Each row is a transaction
// of its own. Report under their own names.
void tblFilterData_Set024(Int16 index, const Statement& sql);
void tblFilterData_Set13(Int16 index, const Statement& sql);

}
