// The six text files of one unload as a set: they are written under side names and
// replace the old ones when all six are complete. A failed unload leaves the last
// good set.
//
//   file + ".New"           a new file; without the mark it is incomplete litter
//   tblTolvek.Txt.Whole     the mark: all six are complete, the exchange has begun
//
// Failures are RuntimeError.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

// While an object of this class exists, the unloads write under the side names.
class UnLoadBeside {
public:
    UnLoadBeside();
    ~UnLoadBeside();
    UnLoadBeside(const UnLoadBeside&) = delete;
    UnLoadBeside& operator=(const UnLoadBeside&) = delete;
};

// The path to which an unload writes the file of that name. Error 75 if the file is
// read-only and so must not be replaced.
Text unLoadPath(TextView file);

void exchangeTextFiles();
void dropNewTextFiles();

// Finishes an exchange that was cut off. If there is none, removes the files of an
// unload that was cut off. Call at a start, and before a load or an unload.
void settleTextFiles();

}
