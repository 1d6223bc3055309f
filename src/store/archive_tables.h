// How a database is recognised as an archive of this program: it has the six
// tables, in their newest form or in that of an older version.
#pragma once
#include "store/schema.h"

namespace tolvek {

// Call once, before the first database is opened. From then on the engine refuses
// databases that aren't archives.
void registerArchiveTables();

// Whether the archive is of an older version (it has no sub keys) and must be
// upgraded. False when the file is missing or unreadable; the next opening reports
// why.
bool isOldArchive(const Text& path);

}
