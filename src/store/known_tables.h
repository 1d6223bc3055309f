// Gives the engine the six tables, so that a Jet archive is imported with their keys,
// rules and lookups. Tables of an older schema are imported unchanged, for the
// upgrade. An archive always has all six tables, in one schema or the other; a file
// that has only some of them has lost the others. From then on only archives can be
// opened (archive_tables.h).
#pragma once

namespace tolvek {

// Call once, before the first database is opened.
void registerKnownTables();

}
