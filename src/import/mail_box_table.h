// The mail boxes in PostPet's folder: their locations and file names. The names are
// PostPet's own.
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

namespace tolvek {

struct MailBoxFiles {
    Text list; // *.ppl
    Text mail; // *.ppm
};

// The main boxes; element 0 of their side's read options chooses them.
extern const MailBoxFiles kReceiveMainBox;
extern const MailBoxFiles kSendMainBox;

// The drawers. Row R exists in both folders; element R + 1 of the side's options
// chooses it. Rows 9 to 15 are empty.
extern CheckedArray<MailBoxFiles, 16> gMailBoxTable;

// Called once, when the main window is initialised.
void fillMailBoxTable();

}
