// Calendar and clock for the logic. Times are the machine's local wall clock.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

struct DateTime {
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
};

DateTime now();
// Tests may fix the clock; an empty function gives the real one back.
void setClock(DateTime (*clock)());

Text formatDate(const DateTime& time);   // "yyyy/mm/dd"
Text formatTime(const DateTime& time);   // "hh:mm:ss", 24 hours

// The next calendar day of an eight-digit text, in the same form. A text that
// is no calendar day: error 13.
Text nextDay(TextView yyyymmdd);

}
