// The archive as the home platform left it, kept when it is turned into this
// program's own format.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

// Where the database at `path` is a Jet file, a copy that can't be told from it
// stands as path + ".Jet" when this returns (".Jet2" and so on where another
// original holds that name; none is ever overwritten, and one that is there
// already isn't kept twice). Any other file: nothing happens. To be called
// before the rotation puts anything in its place.
void keepJetOriginal(const Text& path);

}
