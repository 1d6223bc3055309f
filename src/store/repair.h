// Builds a whole archive from what can still be read in a corrupt one and its .Bak.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

struct Repair {
    int salvaged = 0;             // rows read from corrupt files
    bool previousIsWhole = false; // the .Bak
    bool isNothing() const { return !previousIsWhole && salvaged == 0; }
};

// Writes the new archive as `side`, which must not exist. It gets the rows of
// `previous` and those that can still be read in `damaged`: mails, friends, and rules
// if `previous` has none. A mail that both have is taken from `previous`. If `previous`
// is corrupt too, it gets what can be read there. When neither file yields anything,
// there is no `side`.
//
// Both files are only read. Failures are RuntimeError.
Repair repairedFrom(const Text& damaged, const Text& previous, const Text& side);

}
