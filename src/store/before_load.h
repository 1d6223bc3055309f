// The copy of the archive that a text import makes first, and how a start restores
// it after an import that was cut off.
//
// For a database P, P + ".BeforeLoad" is P as it was before the last import. The
// next import replaces that copy, unless the copy's own import ended with an error;
// the new copy is then numbered (".BeforeLoad2" and so on). A copy that holds a mail
// which the new one lacks isn't replaced either: the old copy is renamed to the
// numbered name.
//
// Two marks, which are empty files, give the state of a copy:
//   copy + ".Running"  an import is running or was cut off: the copy is the archive
//   copy + ".Errors"   its import ended with an error: the copy isn't replaced
//
// Failures are RuntimeError.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

// Call before the first row is deleted. Copy and mark are on the disk when this
// returns. Returns the copy's name, or an empty text (and sets no mark) when there
// is no database.
Text beginLoad(const Text& path);

// Ends the import. Its rows are on the disk when this returns. Without this call
// the next start undoes the import.
void endLoad(const Text& copy, bool withErrors);

// Undoes imports that were cut off. Call at a start, before any database of the
// folder is opened. If the half-loaded database holds a mail that the copy lacks,
// it is kept as P + ".HalfLoaded" (numbered). If the copy is unreadable, copy and
// database both stay. Asks and reports nothing.
void undoCutOffLoads(const Text& folder);

}
