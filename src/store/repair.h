// A whole archive from what a damaged one and its .Bak still give.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

struct Repair {
    int salvaged = 0;             // rows from what is damaged
    bool previousIsWhole = false; // the .Bak
    bool isNothing() const { return !previousIsWhole && salvaged == 0; }
};

// Writes the new archive as `side`, which must not be there: the rows of
// `previous`, and with them what can still be read in `damaged` (mails, friends,
// and rules where `previous` has none), each mail once. Where both have a mail,
// it is the one of `previous`. A `previous` that is damaged too gives what can
// be read in it. When neither gives anything, there is no `side`.
//
// Both files are only read. Failures are RuntimeError.
Repair repairedFrom(const Text& damaged, const Text& previous, const Text& side);

}
