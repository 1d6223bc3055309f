// The compaction of every start, and the rotation that keeps the previous
// generation as .Bak.
//
// For a database path P three files are involved: P, P + ".New" (the compacted
// copy while it is being made) and P + ".Bak" (the database as it stood before).
// At every moment, also at the yields, where the close box may end the program,
// a whole database stands under P: the .Bak is a second name for the file until
// the compacted one takes its place. Where the file system knows no second
// names, plain renames leave a short gap in which P + ".New" is the whole one;
// a start that finds no P puts it in place (see db_start.h).
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

// The database must be closed. Error 53 passes; any other is reported under
// "dbCompress" and ends the routine, with the files as they stand then.
void dbCompress(const Text& path);

}
