#include "browse/subject_line.h"

#include "app/guard.h"

namespace tolvek {

namespace {

constexpr int kSubjectColumn = 55; // bytes before the subject

// The stored digits are sliced, not parsed: a time of five digits is shown as the
// slices come out. Kept.
Text instant(const SubjectLine& line)
{
    return u" " + mid(line.YMD, 1, 4) + u"/" + mid(line.YMD, 5, 2) + u"/" + mid(line.YMD, 7, 2) +
           u" " + mid(line.HMS, 1, 2) + u":" + mid(line.HMS, 3, 2) + u":" + mid(line.HMS, 5, 2) +
           u" ";
}

// Both labels have the same width, so the names start in the same column.
Text otherParty(const SubjectLine& line)
{
    if (line.SndRcvFlag) return u"　送　受取人：" + trim(line.RcvName);
    return u"受　　差出人：" + trim(line.SndName);
}

}

void padToAnsiLength(Text& text, int width)
{
    const int present = ansiLength(text);
    if (present <= width) text += blanks(width - present);
}

void edmsgSubject(const SubjectLine& line, Text& result)
{
    leavePlainOnError(u"edmsgSubject", [&] {
        result = instant(line);
        result += otherParty(line);
        result += u" ";
        // Kept: a longer name pushes the subject to the right.
        padToAnsiLength(result, kSubjectColumn);
        result += trim(line.Subject);
    });
}

}
