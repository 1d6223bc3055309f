// PostPet's mail boxes, under PostPet's own names, and the walk through them.
//
// The order is fixed: receive main box, receive drawers, send main box, send drawers. A
// box is chosen only when its option is exactly 1. The converter finds out whether a
// box exists; nothing is checked before.
#pragma once
#include "import/read_account.h"
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

// Converts each chosen box and reads the result. A failure propagates and leaves the
// remaining boxes unread; so does the first report of a failure that every later mail
// would meet. A path that the converter can't take is error 75 before the first box is
// read. The account is told of every chosen box, also of those that weren't reached.
void MailBoxRead(ReadAccount& account);
// The same without an account.
void MailBoxRead();

}
