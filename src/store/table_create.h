// Creates an empty archive with its six tables (schema.h has their definitions).
//
// The identity of a mail is the primary key of tblTolvek: date, time, sub key,
// direction, sender's and receiver's address. Names and the subject aren't part of
// it: names may change later and the mail stays the same.
#pragma once

namespace tolvek {

// Creates the file at gDbPath with all six tables and leaves it closed. If a file is
// there, the user is asked first; any answer but Yes changes nothing. The new file is
// built as a side file and replaces the old one when it is complete, so that a crash
// never leaves an incomplete one. Reports its own failures; a table that fails doesn't
// stop the next.
void Table_Create();

// Each adds its table to the open gDb and reports its own failure.
void tblTolvek_Create();
void tblSearch_Addresses_Create();
void tblSearch_Name_Create();
void tblFriend_Create();
void tblFilter_Create();
void tblFilterData_Create();

}
