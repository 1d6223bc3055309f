// Gives the engine the six tables, so that those of a Jet archive come out with
// their keys, rules and lookups. Tables of an older schema come out as they are,
// for the upgrade. An archive always has all six, in one schema or the other; one
// that has only some of them has lost the others. From then on no
// database is opened that isn't an archive (archive_tables.h).
#pragma once

namespace tolvek {

// Once, before the first database is opened.
void registerKnownTables();

}
