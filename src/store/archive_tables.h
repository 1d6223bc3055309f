// How a database is recognised as an archive of this program: it has the six
// tables, in their newest form or in that of an older version.
#pragma once
#include "store/schema.h"

namespace tolvek {

// Call once, before the first database is opened. Gives the engine the six tables, so that
// a Jet archive is imported with their keys, rules and lookups. Tables of an older schema
// are imported unchanged, for the upgrade. An archive always has all six tables, in one
// schema or the other; a file that has only some of them has lost the others. From then
// on only archives can be opened.
void registerArchiveTables();

// Whether the archive is of an older version (it has no sub keys) and must be
// upgraded. False when the file is missing or unreadable; the next opening reports
// why.
bool isOldArchive(const Text& path);

}
