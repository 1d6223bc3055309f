#include "converter/mail_date.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

std::string normal(std::string_view text)
{
    const auto date = parseMailDate(text);
    return date ? formatMailDate(*date) : "none";
}

TEST(MailDate, BringsTheFormsMetIntoOne)
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
        {"Tue, 15 Feb 2000 10.11.12", "Tue, 15 Feb 2000 00:00:00"},
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

TEST(MailDate, NearestDateStandsInForOneThatIsNone)
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

TEST(MailDate, FormattedDatesReadBackTheSame)
{
    for (const char* text : {"Tue, 15 Feb 2000 10:11:12 +0900", "Fri, 31 Dec 1999 23:59:59"})
        EXPECT_EQ(normal(text), text);
}

}
}
