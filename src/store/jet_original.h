// The archive as the home platform left it, kept when it is turned into this
// program's own format.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

// Where `original` is a Jet file, a copy that can't be told from it stands as
// database + ".Jet" when this returns (".Jet2" and so on where another original
// holds that name; none is ever overwritten, and one that is there already isn't
// kept twice). Any other file: nothing happens. To be called before anything is
// put in the original's place, or it is deleted.
void keepJetOriginal(const Text& original, const Text& database);

}
