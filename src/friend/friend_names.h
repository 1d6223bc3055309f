// The friend book's names over the mails that are stored already, and the
// correspondent of a mail into the book.
#pragma once
#include "platform/runtime/int16.h"

namespace tolvek {

class frmTolvek;

// Writes the book's names over all mails of its addresses, and the pet's name
// over what the user's own address sent to itself. Reports its own failures.
void edFriendName();

// Takes the correspondent of the subject list's row into the book, or renames
// it there, after asking. 1 when nothing was changed, 0 when the book was (and
// after a failure, which it reports under "edFriendName" too).
Int16 FriendNameAdd(frmTolvek& form, Int16 row);

}
