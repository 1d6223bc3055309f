// The one place where the archive's tables are laid down: every table, each
// field in its order, each index, and the routine that makes the empty file.
//
// The identity of a mail is the primary key of tblTolvek: date, time, sub key,
// direction, sender's and receiver's address. Names and the subject aren't in
// it: names change afterwards without the mail changing identity.
#pragma once

namespace tolvek {

// Creates the file at gDbPath with all six tables and leaves it closed. When a
// file stands there the user is asked first; any answer but Yes touches
// nothing. The new file is built under a side name and takes the place of the
// old one when it is done, so that no crash leaves half of one.
// Reports its own failures; a table that fails doesn't stop the next.
void Table_Create();

// Each adds its table to the open gDb and reports its own failure.
void tblTolvek_Create();
void tblSearch_Addresses_Create();
void tblSearch_Name_Create();
void tblFriend_Create();
void tblFilter_Create();
void tblFilterData_Create();

}
