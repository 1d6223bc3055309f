// Stores a normalised mail as a row of tblTolvek.
//
// Reading the same mail box twice must change nothing; these routines guarantee it.
// Each opens the database itself and closes it before it returns. A failure is reported
// under the routine's own name (ErrReportDb) and ends the routine, so one bad mail
// never stops the next one.
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

namespace tolvek {

// A mail's text in blocks. Elements 0 to 15 go into tblTolvek_Mail1 to
// tblTolvek_Mail16.
using MailBlocks = CheckedArray<Text, 17>;

// What became of a mail. The values are ordered: of the parts of one mail, the highest
// counts.
enum class Storing { Nothing, Known, Stored, Failed };

// found: -1 when a mail with this date, time, sender, receiver and subject is in the
// store, else 0; unchanged after a failure. The names aren't compared.
void duplMailCheck(const Text& SndName, const Text& SndAdd, const Text& RcvName, const Text& RcvAdd,
                   const Text& YMD, const Text& HMS, const Text& Subject, Int16& found);

// Stores the mail unless it exists. Mails of the same second between the same two
// addresses are distinguished by their subjects and numbered by tblTolvek_SubKey.
Storing TolvekDB_Edit(Int16 SndRcvFlag, const Text& SndName, const Text& SndAdd,
                      const Text& RcvName, const Text& RcvAdd, const Text& Subject, const Text& YMD,
                      const Text& HMS, const MailBlocks& MailText);

// Writes the row; true if it was written. SndRcvFlag: 0 for the receive side, any other
// value for the send side.
bool TolvekDB_Insert(Int16 SndRcvFlag, const Text& SndName, const Text& SndAdd, const Text& RcvName,
                     const Text& RcvAdd, const Text& Subject, const Text& YMD, const Text& HMS,
                     Int16 SubKey, const MailBlocks& MailText);

}
