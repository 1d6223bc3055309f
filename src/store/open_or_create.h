// Opens the store for the routines that offer to create a missing one.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

// Opens gDb on gDbPath. If the file is missing (3024), asks under `title` whether to
// create it. Yes creates and opens it; any other answer rethrows 3024, and the
// caller's report ends the routine.
void openOrAskToCreate(TextView title);

// The same without asking.
void openOrCreate();

}
