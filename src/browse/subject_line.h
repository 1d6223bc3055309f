// The text of one row of the subject list: date, time, direction, the other party and
// the subject. In a fixed-pitch font the subjects start in the same column.
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

namespace tolvek {

// The fields that make up one row.
struct SubjectLine {
    Text YMD, HMS;
    Int16 SubKey;
    bool SndRcvFlag = false;
    Text SndName, RcvName, Subject;
};

// Reports under "edmsgSubject"; the result then holds what was built before the
// failure.
void edmsgSubject(const SubjectLine& line, Text& result);

// Appends blanks to a text up to `width` bytes of code page 932. A longer text stays
// unchanged.
void padToAnsiLength(Text& text, int width);

}
