// How a mail that is too long for one row is stored: in parts, each a row of its own one
// second after the part before. All parts but the last have a mark after their subject.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

inline constexpr TextView kContinued = u"　　（次に続く）";

// Kept: the carries are tested in sequence, so an invalid hour carries too. Errors 6 and
// 13 for texts that are no date or time.
void addSecond(Text& YMD, Text& HMS);

// The subject of a stored part that isn't the last. Trimmed like the stored row: with an
// empty subject, the mark's leading blanks would otherwise hide the row from the next
// read, which would store it again.
Text subjectOfPart(const Text& subject);

// Whether the subject has the mark; the subject without it.
bool isContinued(TextView storedSubject);
Text withoutMark(TextView storedSubject);

}
