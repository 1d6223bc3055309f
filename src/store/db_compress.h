// The compaction of every start, and the rotation that keeps the previous
// generation as .Bak.
//
// For a database path P three files are involved: P, P + ".New" (the compacted
// copy while it is being made) and P + ".Bak" (the database as it stood before).
// At every moment, also at the yields, where the close box may end the program,
// a whole database stands under P: the .Bak is a second name for the file until
// the compacted one takes its place. Where the file system knows no second
// names, plain renames leave a short gap in which P + ".New" is the whole one;
// a start that finds no P puts it in place (see db_start.h). A Jet file, which
// the compaction turns into this program's format, stays as P + ".Jet" too.
//
// P is the file itself where the path given is a link. A read-only P is checked
// and stays. A .Bak with mail beside a P without any becomes P + ".Kept".
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

// The database must be closed. Error 53 passes. A damaged file (3343) is reported,
// and the user decides: from the .Bak and what can still be read (repair.h), or
// without one, or when neither gives anything, a new database; a refusal ends the
// program with nothing touched. What was damaged stays as P + ".Damaged"
// (kept_files.h). What fails in the mending goes to the caller. Any other error,
// also that of a file which isn't this program's (3041), is reported under
// "dbCompress" and ends the routine, with the files as they are then.
//
// A new database made here ends as .Bak, with nothing at P: users know it so,
// and the next opening of the store creates one.
//
// Fields that came damaged out of a Jet file are reported when all is done.
void dbCompress(const Text& path);

}
