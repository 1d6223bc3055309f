// The compaction at every start, and the rotation that keeps the previous
// generation as .Bak.
//
// For a database path P three files are involved: P, P + ".New" (the compacted
// copy while it is being made) and P + ".Bak" (the database before the compaction).
// At every moment P is a whole database, also at the yields, where the close box may
// end the program: the .Bak is a hard link to P until the compacted copy replaces P.
// On a file system without hard links, plain renames leave a short gap in which only
// P + ".New" is whole; a start that finds no P puts it in place (see db_start.h).
// The compaction converts a Jet file to this program's format; the original stays
// as P + ".Jet".
//
// If the path given is a link, P is the file that it leads to. A read-only P is
// checked and otherwise left alone. A .Bak with mails beside a P without any becomes
// P + ".Kept", unless a backup holds all of these mails (other_copies.h).
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

// The database must be closed. Error 53 is ignored. A corrupt file (3343) is reported,
// and the user decides. With a .Bak the offer is a repair from the .Bak and what can
// still be read (repair.h); without a .Bak, or when the repair yields nothing, it is
// a new database. A refusal ends the program and changes nothing. The corrupt file is
// kept as P + ".Damaged" (kept_files.h). A failure during the repair propagates to
// the caller. Any other error, including 3041 for a file that isn't an archive, is
// reported under "dbCompress" and ends the routine; the files stay as they are then.
//
// A database created here ends up as .Bak and P stays missing. This is the
// established behaviour; the next opening of the store creates a database.
//
// Corrupt fields that came from a Jet file are reported at the end.
void dbCompress(const Text& path);

}
