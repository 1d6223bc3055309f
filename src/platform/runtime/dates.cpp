#include "platform/runtime/dates.h"

#include "platform/runtime/runtime_error.h"
#include "platform/runtime/test_hooks.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <ctime>
#include <mutex>

namespace tolvek {

namespace {

using Clock = DateTime (*)();

std::atomic<Clock> fixedClock = nullptr;

constexpr int kFirstYear = 100, kLastYear = 9999; // the range of the classic platform's calendar

// std::localtime returns a buffer shared by all threads.
std::tm localTime(std::time_t time)
{
    static std::mutex mutex;
    const std::lock_guard lock(mutex);
    return *std::localtime(&time);
}

DateTime realClock()
{
    const std::tm local = localTime(std::time(nullptr));
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
            local.tm_hour,        local.tm_min,     local.tm_sec};
}

Text digits(int value, int count)
{
    const Text text = decimal(value);
    const int missing = std::max(0, count - length(text));
    return Text(static_cast<std::size_t>(missing), u'0') + text;
}

unsigned number(TextView digitText)
{
    unsigned value = 0;
    for (const char16_t digit : digitText)
        value = 10 * value + (digit - u'0');
    return value;
}

std::chrono::year_month_day calendarDay(TextView text)
{
    using namespace std::chrono;
    const bool eightDigits = text.size() == 8 && text.find_first_not_of(u"0123456789") == text.npos;
    if (!eightDigits) throw RuntimeError(13);
    const year_month_day date{year(static_cast<int>(number(text.substr(0, 4)))),
                              month(number(text.substr(4, 2))), day(number(text.substr(6, 2)))};
    // ok() also rejects days such as 30 February.
    if (!date.ok() || date.year() < year(kFirstYear)) throw RuntimeError(13);
    return date;
}

}

DateTime now()
{
    const Clock clock = fixedClock;
    return clock ? clock() : realClock();
}

void hooks::setClock(DateTime (*clock)())
{
    fixedClock = clock;
}

Text formatDate(const DateTime& time)
{
    return digits(time.year, 4) + u"/" + digits(time.month, 2) + u"/" + digits(time.day, 2);
}

Text formatTime(const DateTime& time)
{
    return digits(time.hour, 2) + u":" + digits(time.minute, 2) + u":" + digits(time.second, 2);
}

Text nextDay(TextView yyyymmdd)
{
    using namespace std::chrono;
    const year_month_day next = sys_days(calendarDay(yyyymmdd)) + days(1);
    // The last day of the calendar has no next one.
    if (next.year() > year(kLastYear)) throw RuntimeError(5);
    return digits(static_cast<int>(next.year()), 4) +
           digits(static_cast<int>(static_cast<unsigned>(next.month())), 2) +
           digits(static_cast<int>(static_cast<unsigned>(next.day())), 2);
}

}
