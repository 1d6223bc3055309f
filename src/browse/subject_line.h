// One row of the subject list as text: date, time, direction, the other party
// and the subject, the subjects in one column of a fixed-pitch font.
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

namespace tolvek {

// What one row is made from.
struct SubjectLine {
    Text YMD, HMS;
    Int16 SubKey;
    bool SndRcvFlag = false;
    Text SndName, RcvName, Subject;
};

// Reports under "edmsgSubject" and leaves the result as far as it got.
void edmsgSubject(const SubjectLine& line, Text& result);

// Blanks behind a text up to `width` bytes of code page 932; a longer text
// stays as it is.
void padToAnsiLength(Text& text, int width);

}
