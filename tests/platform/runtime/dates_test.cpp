#include "platform/runtime/dates.h"
#include "platform/runtime/test_hooks.h"

#include "support/errors.h"

#include <ctime>
#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

TEST(DatesTest, TheNextDayFollowsTheCalendar)
{
    const Text table[][2] = {
        {u"20000215", u"20000216"}, {u"20000131", u"20000201"}, {u"20000430", u"20000501"},
        {u"19991231", u"20000101"}, {u"20000228", u"20000229"}, {u"20000229", u"20000301"},
        {u"20010228", u"20010301"}, {u"19000228", u"19000301"}, {u"20040228", u"20040229"},
        {u"21000228", u"21000301"}, {u"01000101", u"01000102"},
    };
    for (const auto& row : table)
        EXPECT_EQ(nextDay(row[0]), row[1]);
}

TEST(DatesTest, ATextThatIsNoCalendarDayIsErrorThirteen)
{
    for (const TextView text :
         {u"", u"2000021", u"200002155", u"20000230", u"20010229", u"20001301", u"20000001",
          u"20000100", u"2000/2/1", u" 2000215", u"2000021a", u"２００００２１５", u"00000101",
          u"00990101", u"-0010101"})
        EXPECT_EQ(errorOf([&] { nextDay(text); }), 13) << toUtf8(text);
}

TEST(DatesTest, BehindTheLastDayOfTheCalendarIsErrorFive)
{
    EXPECT_EQ(nextDay(u"99991230"), u"99991231");
    EXPECT_EQ(errorOf([] { nextDay(u"99991231"); }), 5);
}

TEST(DatesTest, DateAndTimeArePaddedTexts)
{
    EXPECT_EQ(formatDate({2000, 2, 5, 1, 2, 3}), u"2000/02/05");
    EXPECT_EQ(formatTime({2000, 2, 5, 1, 2, 3}), u"01:02:03");
    EXPECT_EQ(formatDate({1999, 12, 31, 0, 0, 0}), u"1999/12/31");
    EXPECT_EQ(formatTime({1999, 12, 31, 23, 59, 59}), u"23:59:59");
    EXPECT_EQ(formatTime({}), u"00:00:00");
}

TEST(DatesTest, ATestCanFixTheClockAndGiveItBack)
{
    hooks::setClock([] { return DateTime{2001, 2, 3, 4, 5, 6}; });
    EXPECT_EQ(formatDate(now()), u"2001/02/03");
    EXPECT_EQ(formatTime(now()), u"04:05:06");
    hooks::setClock(nullptr);
    EXPECT_GE(now().year, 2024);
}

TEST(DatesTest, TheClockIsTheLocalOne)
{
    const std::time_t before = std::time(nullptr);
    const DateTime read = now();
    std::tm local{};
    local.tm_year = read.year - 1900;
    local.tm_mon = read.month - 1;
    local.tm_mday = read.day;
    local.tm_hour = read.hour;
    local.tm_min = read.minute;
    local.tm_sec = read.second;
    local.tm_isdst = -1;
    const std::time_t moment = std::mktime(&local);
    EXPECT_GE(moment, before);
    EXPECT_LE(moment, std::time(nullptr));
}

}
}
