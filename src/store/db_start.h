// Cleans up, at a start, the database files that an interrupted run left, before the
// start looks for the database. Nothing here asks or reports.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

// If there is no database at `path` but a whole path + ".New", a compaction was cut
// off between its renames, and the compacted copy is put in place. A ".New" that
// isn't whole stays; the next compaction deletes it.
void restoreFromNew(const Text& path);

// Call when a start finds no database, before it creates one: the compaction after
// the creation would delete a .Bak with mails in it. A .Bak that has mails or can't
// be read becomes path + ".Kept", ".Kept2" and so on; none is ever overwritten.
void keepBackUpAside(const Text& path);

// holdsMail throws when the archive can't be read; mayHoldMail is then true.
bool isReadable(const Text& path);
bool holdsMail(const Text& path);
bool mayHoldMail(const Text& path);

// Deletes unfinished side files in the database's folder: the files into which a
// compaction, a backup, a repair, a creation or a copy was writing when it was cut
// off. Call only after the functions that put a side file in place. path + ".New"
// isn't deleted; the next compaction does that.
void removeUnfinished(const Text& path);

}
