// Normalises each field of the temp file to the form that the store keeps.
//
// These routines determine the archive's keys. Changing one of them, however odd it
// looks, would make old mails unrecognisable to the next read, which would store them
// again. Positions count characters from 1; an ANSI length counts bytes of code page
// 932.
//
// edAddres, edSubject and edMail report a failure under their own names and return.
// edString reports and goes on. edDate lets failures propagate.
#pragma once
#include "import/tolvek_db.h"

namespace tolvek {

// Replaces an unknown address or name: the store accepts no empty one.
inline constexpr TextView kNoValue = u"設定無し";

// Blanks every bracket and backslash, also full-width ones, and trims.
void edString(const Text& source, Text& result);

// Parses a From line (isFrom -1) or a To line (0). side: 0 receive, -1 send.
void edAddres(Int16 side, Int16 isFrom, const Text& line, Text& name, Text& address);

// Decodes the whole line, label included; at most 100 characters of the value are kept.
void edSubject(const Text& line, Text& subject);

// Parses an Internet date, with or without its day name, as the sender's local time.
// Both results are empty after a failure: a part that is no number is error 13, a
// missing part or a year beyond 16 bits is error 6.
void edDate(const Text& line, Text& YMD, Text& HMS);

// Reads a mail's text from the open file up to its end line, which is left in `line`.
// Every fifteen full blocks are stored as a part of their own, and YMD and HMS advance
// by one second each time. MailDone: -1 when there was any text. Returns what became of
// these parts; Nothing if there were none.
Storing edMail(Int16 fileNumber, Text& line, Int16 SndRcvFlag, const Text& SndName,
               const Text& SndAdd, const Text& RcvName, const Text& RcvAdd, const Text& Subject,
               Text& YMD, Text& HMS, MailBlocks& MailText, Int16& MailDone);

}
