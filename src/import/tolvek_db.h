// Between a normalised mail and its row in tblTolvek.
//
// Reading the same mail box twice changes nothing: that is what these routines
// keep. Each opens the database itself and closes it before it returns; a
// failure is reported under the routine's own name (ErrReportDb) and ends the
// routine, so one bad mail never stops the next one.
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

namespace tolvek {

// A mail's text in blocks. 0 to 15 go into tblTolvek_Mail1 to tblTolvek_Mail16.
using MailBlocks = CheckedArray<Text, 17>;

// found: -1 when a mail of this date, time, sender, receiver and subject is in
// the store, else 0; as it was after a failure. The names have no part in it.
void duplMailCheck(const Text& SndName, const Text& SndAdd, const Text& RcvName, const Text& RcvAdd,
                   const Text& YMD, const Text& HMS, const Text& Subject, Int16& found);

// Stores the mail unless it is there. Mails of one second between the same two
// addresses are told apart by their subjects and numbered by tblTolvek_SubKey.
void TolvekDB_Edit(Int16 SndRcvFlag, const Text& SndName, const Text& SndAdd, const Text& RcvName,
                   const Text& RcvAdd, const Text& Subject, const Text& YMD, const Text& HMS,
                   const MailBlocks& MailText);

// Writes the row. SndRcvFlag: 0 for the receive side, any other value for the send side.
void TolvekDB_Insert(Int16 SndRcvFlag, const Text& SndName, const Text& SndAdd, const Text& RcvName,
                     const Text& RcvAdd, const Text& Subject, const Text& YMD, const Text& HMS,
                     Int16 SubKey, const MailBlocks& MailText);

}
