// State shared by all commands while the program runs.
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

#include <cstdint>

namespace tolvek {

extern CheckedArray<Text, 6> gStatusLines; // filled by the routine that sets gBusyFlag
extern Int16 gBusyFlag;                    // -1 while the status text is to blink
extern Int16 gStatusColorFlag;             // which of the two blink colours comes next
extern Int16 gResizeBusy;                  // -1 while the layout rule runs
extern Int16 gUnloading;                   // -1 once the unload has begun
extern Int16 gBackUpDisp;                  // 1 while a backup is on display
// File name of the backup chosen last, without its folder.
extern Text gBackUpFile;
extern Int16 gMailReadCancel; // -1: the mail box selection was cancelled
extern Int16 gEditCancel;     // -1: an editor was cancelled
// Process id of the PostPet that replies are typed into; 0: none known.
extern std::int32_t gPostPetPid;
extern Text gHelpPath;
extern CheckedArray<Text, 13> gMonthName; // "Jan" to "Dec" at 0 to 11, 12 stays empty

// Fills gMonthName with the month names of mail dates.
void fillMonthNames();

void setStatusLines(TextView a, TextView b, TextView c, TextView d, TextView e, TextView f);

}
