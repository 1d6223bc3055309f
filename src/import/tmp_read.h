// Walks Tolvek.Tmp, the text that the converter makes of one mail box, and
// hands every finished mail to the store.
//
// The file: anything up to the field "<Start>"; then for each mail the lines
// From, To, Subject and Date (label, one separator character, value), a Mail
// line, the text, and an <End> line. Subject stands before Date, since a mail is
// looked for in the store as soon as sender, receiver and date are known.
//
// The reader is a state machine over lines: headings, text (read by edMail),
// and skipping, once a mail was found in the store. A mail without an end line
// is lost on purpose: the converter writes the end line last, so its absence
// means a conversion that was cut off.
//
// After a report of a failure that will hold for every mail the reading ends: the
// mail in hand isn't stored, and the file is closed.
#pragma once
#include "platform/runtime/int16.h"

namespace tolvek {

// side: 0 for the receive side, -1 for the send side. SndRcvFlag: the same, as
// it is stored with the mail. count: the converter's count, for the progress
// text alone. No file: nothing happens. Reports its own failures under
// "tmpRead" and goes on with the next statement.
void tmpRead(Int16 side, Int16 SndRcvFlag, Int16 count);

}
