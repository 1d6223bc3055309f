// What a start does about database files that an earlier run left behind,
// before it looks for the database. Nothing here asks or tells.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

// No database at `path` and a whole path + ".New": a compaction was cut off
// between its renames, so the compacted copy is put in place. Anything less
// than a whole one is left for the next compaction to delete.
void restoreFromNew(const Text& path);

// To be called when a start finds no database, before it creates one: the
// compaction behind the creation would delete a .Bak with mail in it. Such a one
// (or one that can't be read) becomes path + ".Kept", ".Kept2" and so on, never
// overwritten.
void keepBackUpAside(const Text& path);

// Whether an archive that can be read has a mail in it; one that can't be read may
// have one.
bool isReadable(const Text& path);
bool holdsMail(const Text& path);
bool mayHoldMail(const Text& path);

// Deletes the side files that a run which was cut off left in the database's
// folder: what a compaction, a backup, a repair, a creation or a copy was being
// written into before it got its name. To be called when nothing is left to be
// put in place; path + ".New" is the next compaction's own affair.
void removeUnfinished(const Text& path);

}
