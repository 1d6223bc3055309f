// Reads Tolvek.Tmp, the text that the converter makes of one mail box, and hands each
// complete mail to the store.
//
// File format: anything up to the field "<Start>"; then for each mail the lines From,
// To, Subject and Date (label, one separator character, value), a Mail line, the text,
// and an <End> line. Subject precedes Date, because a mail is looked up in the store as
// soon as sender, receiver and date are known.
//
// The reader is a state machine over lines: headings, text (read by edMail), and
// skipping once a mail was found in the store. A mail without an end line is dropped on
// purpose: the converter writes the end line last, so its absence means that the
// conversion was cut off.
//
// After the report of a failure that every later mail would meet, reading ends: the
// current mail isn't stored, and the file is closed.
#pragma once
#include "import/read_account.h"
#include "platform/runtime/int16.h"

namespace tolvek {

// side: 0 for the receive side, -1 for the send side. SndRcvFlag: the same, as stored
// with the mail. count: the converter's count, only for the progress text. Does nothing
// if there is no file. Reports its own failures under "tmpRead" and goes on with the
// next statement. The account is told what became of each mail.
void tmpRead(Int16 side, Int16 SndRcvFlag, Int16 count, ReadAccount& account);
// The same without an account.
void tmpRead(Int16 side, Int16 SndRcvFlag, Int16 count);

}
