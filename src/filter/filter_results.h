// The filter results: for each sorting rule, tblFilterData lists every mail that the
// rule selects, under the rule's number and with a copy of the mail's headings.
//
// The table is emptied and rebuilt each time. Rules that compare whole texts (codes 0,
// 2, 4) let the database engine select; rules that search inside texts (1, 3, 5) walk
// all of tblTolvek. What a rule lists here, what it keeps out at import and what
// deleting by it removes are three different sets on purpose; don't unify them.
//
// Everything yields after each row. Callers have disabled the commands.
#pragma once
#include "platform/dao/statement.h"
#include "platform/runtime/int16.h"

#include <cstdint>

namespace tolvek {

// tblFilterDt_Id of the next row. Counts on across all rules of one build.
extern std::int32_t gFilterDataId;

// Rebuilds the table from gFilterRule; callers make sure that the rules are current.
// Sets status lines 3 and 4 for each rule. A rule that fails keeps the rows written so
// far, and the next rule follows. Reports under "tblFilterData_Sel".
void tblFilterData_Sel();

// The statement for gFilterRule(index): mode 0 selects its mails, mode 1 deletes them.
// Empty for a rule without a header, for any other mode, and for deleting by a code
// that searches inside texts. Reports nothing; failures propagate.
void tblFilterData_SqlEdit(Int16 mode, Int16 index, Statement& sql);

// Each copies rows of `sql` (mode 0) under the rule's number: the first one all rows,
// the second one those that contain the rule's text, counting gFilterDataId up for the
// others too. If the database is missing, the user is asked whether to create it. Each
// row is a transaction of its own. Each reports under its own name.
void tblFilterData_Set024(Int16 index, const Statement& sql);
void tblFilterData_Set13(Int16 index, const Statement& sql);

}
