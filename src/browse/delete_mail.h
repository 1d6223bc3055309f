// Deletes mail from the archive: by row, by navigator entry, by rule.
//
// None of these updates the derived tables; the commands rebuild them. A failure is
// reported under the routine's own name and ends the routine. Closing the database
// rolls the failed statement back, and the caller goes on.
#pragma once
#include "platform/dao/statement.h"
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

namespace tolvek {

// Deletes the mail of a row of lstSubject.
void delOneMail(Int16 row);

// Deletes all mail to or from an address (type 0) or a name (1), or of a date (2). Any
// other type is reported in a box and leaves gDb open.
void delMail(Int16 type, const Text& key);

// Deletes the mails of gFilterRule(index) and then the rule itself, even when the mails
// could not be deleted. A code that compares whole texts deletes the mails that match
// now; any other deletes the mails listed by the last filter run.
void delFilter(Int16 index);

// Deletes the mails that tblFilterData lists under the rule, each in its own
// transaction.
void delMail_13(Int16 index);
// Executes `sql`. The index isn't used.
void delMail_024(Int16 index, const Statement& sql);

}
