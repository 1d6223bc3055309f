// The six text files of one unload as a set: written beside their places, and
// exchanged when all six are whole. A failed unload leaves the last good set.
//
//   file + ".New"           a file on its way; nothing but litter without the mark
//   tblTolvek.Txt.Whole     the mark: all six are whole, the exchange has begun
//
// Failures are RuntimeError.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

// While one lives, the unloads write beside the files' places.
class UnLoadBeside {
public:
    UnLoadBeside();
    ~UnLoadBeside();
    UnLoadBeside(const UnLoadBeside&) = delete;
    UnLoadBeside& operator=(const UnLoadBeside&) = delete;
};

// Where an unload is to write the file of that name. A file that may not be
// replaced is error 75.
Text unLoadPath(TextView file);

void exchangeTextFiles();
void dropNewTextFiles();

// Finishes an exchange that was cut off; without one, removes what a cut-off unload
// was writing into. For a start, and before a load or an unload.
void settleTextFiles();

}
