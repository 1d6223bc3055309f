// Opening the store in the routines that offer to create a missing one.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

// Opens gDb on gDbPath. No file there (3024): asks under `title` whether to
// create one; Yes creates it and opens it, anything else gives 3024 back to
// the caller, whose report then ends the routine.
void openOrAskToCreate(TextView title);

// The same without the question.
void openOrCreate();

}
