// The friend book's names: looked up by address, written over stored mails, and added
// from a mail's correspondent.
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

namespace tolvek {

class frmTolvek;

// Looks the address up unchanged in the open gDb. True when it is in the book; gRs is
// then on its row. Failures propagate.
bool findFriend(const Text& address);

// For a correspondent whose header line gave no name. Sets `name` to the friend book's
// name for the address, or to the pet's name if the friend has none. If the address
// isn't in the book, `name` stays unchanged. Reports its own failures.
void setName(const Text& address, Text& name);

// Writes the book's names over all mails from and to its addresses, and the pet's name
// over mail from the user's own address to itself. Reports its own failures.
void edFriendName();

// After asking, adds the correspondent of the subject list's row to the book, or
// renames the existing friend. 1 when nothing was changed, else 0. After a failure,
// which is reported under "edFriendName", it is 0 too.
Int16 FriendNameAdd(frmTolvek& form, Int16 row);

}
