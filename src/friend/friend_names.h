// Writes the friend book's names over stored mails, and adds a mail's correspondent to
// the book.
#pragma once
#include "platform/runtime/int16.h"

namespace tolvek {

class frmTolvek;

// Writes the book's names over all mails from and to its addresses, and the pet's name
// over mail from the user's own address to itself. Reports its own failures.
void edFriendName();

// After asking, adds the correspondent of the subject list's row to the book, or
// renames the existing friend. 1 when nothing was changed, else 0. After a failure,
// which is reported under "edFriendName", it is 0 too.
Int16 FriendNameAdd(frmTolvek& form, Int16 row);

}
