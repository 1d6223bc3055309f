// What makes a database an archive of this program's: the six tables, in their
// newest form or in that of an older version.
#pragma once
#include "store/schema.h"

namespace tolvek {

// From here on the engine opens no other database. Once, before the first one.
void registerArchiveTables();

// Of an older version, so that it is to be upgraded: without the sub keys. False
// for what isn't there or can't be read; whoever opens it next says why.
bool isOldArchive(const Text& path);

}
