// Calendar and clock. Times are the machine's local time.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

struct DateTime {
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
};

DateTime now();

Text formatDate(const DateTime& time); // "yyyy/mm/dd"
Text formatTime(const DateTime& time); // "hh:mm:ss", 24 hours

// The next calendar day of an eight-digit text, in the same form. Error 13 if the
// text is no calendar day.
Text nextDay(TextView yyyymmdd);

}
