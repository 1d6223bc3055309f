#include "store/long_mail.h"

#include "platform/runtime/dates.h"
#include "platform/runtime/int16.h"
#include "platform/runtime/numbers.h"

namespace tolvek {

void addSecond(Text& YMD, Text& HMS)
{
    Int16 hour = toInt16(mid(HMS, 1, 2));
    Int16 minute = toInt16(mid(HMS, 3, 2));
    Int16 second = toInt16(mid(HMS, 5, 2));
    second += 1;
    if (second >= 60) {
        second -= 60;
        minute += 1;
    }
    if (minute >= 60) {
        minute -= 60;
        hour += 1;
    }
    if (hour >= 24) {
        hour -= 24;
        YMD = nextDay(YMD);
    }
    HMS = format(hour, u"00") + format(minute, u"00") + format(second, u"00");
}

Text subjectOfPart(const Text& subject)
{
    return trim(subject + Text(kContinued));
}

bool isContinued(TextView storedSubject)
{
    return storedSubject.ends_with(trim(kContinued));
}

// The blanks of the mark are gone where the subject before it is empty.
Text withoutMark(TextView storedSubject)
{
    for (const TextView mark : {kContinued, kContinued.substr(2)})
        if (storedSubject.ends_with(mark))
            return Text(storedSubject.substr(0, storedSubject.size() - mark.size()));
    return Text(storedSubject);
}

}
