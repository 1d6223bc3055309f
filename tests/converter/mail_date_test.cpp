#include "converter/mail_date.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

std::string normal(std::string_view text)
{
    const auto date = parseMailDate(text);
    return date ? formatMailDate(*date) : "none";
}

TEST(MailDateTest, BringsTheFormsMetIntoOne)
{
    const std::pair<const char*, const char*> rows[] = {
        {"Tue, 15 Feb 2000 10:11:12 +0900", "Tue, 15 Feb 2000 10:11:12 +0900"},
        {"tue,15 february 2000 10:11:12 -0800", "Tue, 15 Feb 2000 10:11:12 -0800"},
        {"15 Feb 49 1:02", "Mon, 15 Feb 2049 01:02:00"},
        {"15 Feb 50 1:02", "Wed, 15 Feb 1950 01:02:00"},
        {"15 Feb 99 1:02", "Mon, 15 Feb 1999 01:02:00"},
        {"15 Feb 103 1:02", "Sat, 15 Feb 2003 01:02:00"},
        {"Tue Feb  5 00:00:00 2002", "Tue, 05 Feb 2002 00:00:00"},
        {"Tue, 15 Feb 2000 10:11:12+0900", "Tue, 15 Feb 2000 10:11:12 +0900"},
        {"Tue, 15 Feb 2000 10:11:60 GMT", "Tue, 15 Feb 2000 10:11:59 +0000"},
        {"Tue, 15 Feb 2000 10.11.12", "Tue, 15 Feb 2000 10:11:12"},
        {"Tue, 15 Feb 2000 9.05 +0900", "Tue, 15 Feb 2000 09:05:00 +0900"},
        {"98/03/10 12:34:56", "Tue, 10 Mar 1998 12:34:56"},
        {"1998.3.10", "Tue, 10 Mar 1998 00:00:00"},
        {"1998.3.10 9.05.06", "Tue, 10 Mar 1998 09:05:06"},
        {"10.03.2003", "Mon, 10 Mar 2003 00:00:00"},
        {"3/25/2003", "Tue, 25 Mar 2003 00:00:00"},
        {"25/3/2003", "Tue, 25 Mar 2003 00:00:00"},
        {"3/4/2003", "Tue, 04 Mar 2003 00:00:00"},
        {"4.3.03 1:02", "Tue, 04 Mar 2003 01:02:00"},
        {"2003/25/3", "Tue, 25 Mar 2003 00:00:00"},
        {"00-02-15 1:02", "Tue, 15 Feb 2000 01:02:00"},
        {"H10.03.10", "Tue, 10 Mar 1998 00:00:00"},
        {"S63/1/7 8:00", "Thu, 07 Jan 1988 08:00:00"},
        {"2003年3月10日 12時34分56秒", "Mon, 10 Mar 2003 12:34:56"},
        {"２００３年３月１０日（月）　午後３：０４", "Mon, 10 Mar 2003 15:04:00"},
        {"平成 10年3月10日 9時", "Tue, 10 Mar 1998 09:00:00"},
        {"令和元年5月1日", "Wed, 01 May 2019 00:00:00"},
        {"\x95\xBD\x90\xAC"
         "10\x94\x4E"
         "3\x8C\x8E"
         "10\x93\xFA",
         "Tue, 10 Mar 1998 00:00:00"},
        {"=?iso-2022-jp?B?MjAwMxskQkcvGyhCMxskQjduGyhCMTAbJEJGfBsoQg==?= 1:02",
         "Mon, 10 Mar 2003 01:02:00"},
        {"Mo, 10 Mär 2003 12:34:56 +0100", "Mon, 10 Mar 2003 12:34:56 +0100"},
        {"Mi, 5. Okt. 2005 12.34.56", "Wed, 05 Oct 2005 12:34:56"},
        {"mar, 4 févr 2003 1:02", "Tue, 04 Feb 2003 01:02:00"},
        {"sam., 2 août 2003 1:02", "Sat, 02 Aug 2003 01:02:00"},
        {"lun, 10 dic 2001 1:02", "Mon, 10 Dec 2001 01:02:00"},
        {"Пн, 10 марта 2003 12:34", "Mon, 10 Mar 2003 12:34:00"},
        {"March 10th, 2003 12:34 PM", "Mon, 10 Mar 2003 12:34:00"},
        {"15 Feb 19100 1:02:03", "Tue, 15 Feb 2000 01:02:03"},
        {"20030310T070809Z", "Mon, 10 Mar 2003 07:08:09 +0000"},
        {"2003-03-10T07:08:09+09:00", "Mon, 10 Mar 2003 07:08:09 +0900"},
        {"Mon, 10 Mar 2003 07:08:09+09:00", "Mon, 10 Mar 2003 07:08:09 +0900"},
        {"20030310070809", "Mon, 10 Mar 2003 07:08:09"},
        {"10/Mar/2003:07:08:09 +0900", "Mon, 10 Mar 2003 07:08:09 +0900"},
        {"3/25", "none"},
        {"H10", "none"},
        {"29 Feb 2000 1:02:03", "Tue, 29 Feb 2000 01:02:03"},
        {"29 Feb 2001 1:02:03", "none"},
        {"15 Xyz 2000 1:02:03", "none"},
        {"15 Feb 2000 25:00:00", "none"},
        {"2003/3/1", "Sat, 01 Mar 2003 00:00:00"},
        {"12:30:00 am 15 Feb 2000", "Tue, 15 Feb 2000 00:30:00"},
        {"99999999999999999999 Feb 2000", "none"},
        {"1 Jan 99999999999 1:00", "none"},
        {"", "none"},
        {"soon", "none"},
        {"(((", "none"},
    };
    for (const auto& [given, expected] : rows)
        EXPECT_EQ(normal(given), expected) << given;
}

TEST(MailDateTest, NearestDateStandsInForOneThatIsNone)
{
    const auto nearest = [](std::string_view text) {
        const auto date = parseMailDate(text, DateRule::Nearest);
        return date ? formatMailDate(*date) : "none";
    };
    EXPECT_EQ(nearest("31 Feb 2000 10:11:12"), "Tue, 29 Feb 2000 10:11:12");
    EXPECT_EQ(nearest("15 Feb 2000 25:70:12"), "Tue, 15 Feb 2000 23:59:12");
    EXPECT_EQ(nearest("15 Xyz 2000 1:02:03"), "none");
    EXPECT_EQ(nearest("15 Feb 2000 10:11:12"), "Tue, 15 Feb 2000 10:11:12");
}

TEST(MailDateTest, IsComparedInTheWorldsTime)
{
    const auto seconds = [](std::string_view text) { return secondsOf(*parseMailDate(text)); };
    EXPECT_EQ(seconds("15 Feb 2000 09:00 +0900"), seconds("15 Feb 2000 00:00 GMT"));
    EXPECT_EQ(seconds("14 Feb 2000 22:30 -0130"), seconds("15 Feb 2000 00:00"));
}

TEST(MailDateTest, FormattedDatesReadBackTheSame)
{
    for (const char* text : {"Tue, 15 Feb 2000 10:11:12 +0900", "Fri, 31 Dec 1999 23:59:59"})
        EXPECT_EQ(normal(text), text);
}

}
}
