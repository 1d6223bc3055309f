// Brings each raw piece of the temp file into the form that the store keeps.
//
// What these routines decide is what the archive's keys look like: changing one
// of them, however odd it looks, makes old mails unrecognisable at the next
// read. Positions count from 1 and count characters; an ANSI length is in bytes
// of code page 932.
//
// edAddres, edSubject and edMail report a failure under their own names and
// leave; edString reports and goes on; edDate lets it go up to its caller.
#pragma once
#include "import/tolvek_db.h"

namespace tolvek {

// Stands in for an address or a name that nobody knows: the store takes no empty one.
inline constexpr TextView kNoValue = u"設定無し";

// Blanks every bracket and backslash, full-width ones too, and trims.
void edString(const Text& source, Text& result);

// One From line (isFrom -1) or To line (0). side: 0 receive, -1 send.
void edAddres(Int16 side, Int16 isFrom, const Text& line, Text& name, Text& address);

// The label is decoded along with the value; at most 100 characters stay.
void edSubject(const Text& line, Text& subject);

// An Internet date, with or without its day name, as the sender's own wall
// clock. Both results stay empty when it fails: a piece that is no number is
// error 13, a missing piece or a year beyond 16 bits error 6.
void edDate(const Text& line, Text& YMD, Text& HMS);

// Reads a mail's text from the open file up to its end line, which stays in
// `line`. Fifteen full blocks go to the store as a part of their own; YMD and
// HMS move on by a second with each. MailDone: -1 when there was any text.
void edMail(Int16 fileNumber, Text& line, Int16 SndRcvFlag, const Text& SndName, const Text& SndAdd,
            const Text& RcvName, const Text& RcvAdd, const Text& Subject, Text& YMD, Text& HMS,
            MailBlocks& MailText, Int16& MailDone);

}
