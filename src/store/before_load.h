// The copy of the archive that a text import leaves beside it, and the way back.
//
// For a database P, P + ".BeforeLoad" is what P was before the last import. It is
// replaced by the next import's copy unless its own import ended with an error;
// the new copy is then numbered (".BeforeLoad2" and so on). A copy with a mail that
// the new one lacks is never given up either: it takes the number itself.
//
// Two marks, empty files, say what a copy is:
//   copy + ".Running"  an import is at work or was cut off: the copy is the archive
//   copy + ".Errors"   its import ended with an error: it isn't replaced
//
// Failures are RuntimeError.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

// To be called before the first row is deleted. Copy and mark are on the disk when
// this returns. The copy's name; empty, and no mark, when there is no database.
Text beginLoad(const Text& path);

// The import is over, and what it made is on the disk when this returns. Without
// this call the next start takes the import back.
void endLoad(const Text& copy, bool withErrors);

// At a start, before anything looks at a database of the folder: an import that
// was cut off is taken back. A mail that is in the half-loaded database alone stays
// in P + ".HalfLoaded" (numbered). A copy that can't be read any more is left, and
// the database too. Asks and reports nothing.
void undoCutOffLoads(const Text& folder);

}
