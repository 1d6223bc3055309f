// What the parts of the running program know of each other, for the whole run.
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

#include <cstdint>

namespace tolvek {

extern CheckedArray<Text, 6> gStatusLines; // filled by whoever sets gBusyFlag
extern Int16 gBusyFlag;                    // -1 while the status text is to blink
extern Int16 gStatusColorFlag;             // which of the two blink colours comes next
extern Int16 gResizeBusy;                  // -1 while the layout rule runs
extern Int16 gUnloading;                   // -1 once the unload has begun
extern Int16 gBackUpDisp;                  // 1 while a backup is on display
extern Text gBackUpFile;
extern Int16 gMailReadCancel; // -1: the mail box selection was left by Cancel
extern Int16 gEditCancel;     // -1: an editor was left by Cancel
extern std::int32_t gPostPetPid;
extern Text gHelpPath;
extern CheckedArray<Text, 13> gMonthName; // "Jan" to "Dec" at 0 to 11, 12 stays empty

// As the dates of mail name the months.
void fillMonthNames();

void setStatusLines(TextView a, TextView b, TextView c, TextView d, TextView e, TextView f);

}
