// Deleting mail from the archive: by row, by entry of the navigator, by rule.
//
// None of these touches the derived tables; the commands rebuild them. Each
// reports a failure under its own name and leaves: the statement that failed
// is undone by the closing of the database, and the caller goes on.
#pragma once
#include "platform/dao/statement.h"
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

namespace tolvek {

// The mail behind a row of lstSubject.
void delOneMail(Int16 row);

// All mail to or from an address (type 0) or a name (1), or of a date (2). Any
// other type is told in a box and leaves gDb open.
void delMail(Int16 type, const Text& key);

// The mails of gFilterRule(index), and then the rule itself, also when its
// mails could not be deleted. A code that compares whole texts deletes what
// matches now; any other deletes what the last filter run listed.
void delFilter(Int16 index);

// The mails that tblFilterData lists under the rule, one transaction each.
void delMail_13(Int16 index);
// Runs `sql`. The index has no part in it.
void delMail_024(Int16 index, const Statement& sql);

}
