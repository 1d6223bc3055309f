#include "import/mail_fields.h"
#include "import_fixture.h"

namespace tolvek::test {
namespace {

class EdDateTest : public ImportTest {
protected:
    static int errorOf(const Text& value)
    {
        Text ymd = u"old", hms = u"old";
        int number = 0;
        try {
            edDate(u"Date:" + value, ymd, hms);
        } catch (const RuntimeError& error) {
            number = error.number();
        }
        EXPECT_EQ(ymd, u"") << toUtf8(value);
        EXPECT_EQ(hms, u"") << toUtf8(value);
        return number;
    }
};

TEST_F(EdDateTest, ReadsTheSendersOwnWallClock)
{
    const struct {
        Text value, ymd, hms;
    } cases[] = {
        {u" Tue, 15 Feb 2000 10:11:12 +0900", u"20000215", u"101112"},
        {u"15 Feb 00 10:11:12 +0900", u"20000215", u"101112"},
        {u"15 Feb 2000 10:11:12", u"20000215", u"101112"},
        {u"5 Dec 1999 00:00:01 GMT", u"19991205", u"000001"},
        {u"15 Xyz 1999 10:11:12", u"19990015", u"101112"},
        {u"15 feb 1999 10:11:12", u"19990015", u"101112"},
        // The hour gets no leading zero.
        {u"15 Feb 99 9:05", u"19990215", u"90500"},
        {u"15 Feb 2000 10:23 +0900", u"20000215", u"102300"},
        {u"15 Feb 2000 10:23+0900", u"20000215", u"102300"},
        // A zone without a plus sign stays part of the minute.
        {u"15 Feb 2000 10:23 -0800", u"20000215", u"1023 -080000"},
        {u"15 Feb 2000 10:11:1", u"20000215", u"10111"},
        {u"15 Feb 2000 10:11:", u"20000215", u"1011"},
        {u"15 Feb 2000 10:11:1 ", u"20000215", u"10111"},
        {u"15 Feb 2000 :11:12", u"20000215", u"1112"},
        // The rest of a long day name remains and is then no number; a bare
        // three-letter name is removed.
        {u"Tue 15 Feb 2000 10:11:12", u"20000215", u"101112"},
    };
    for (const auto& each : cases) {
        Text ymd, hms;
        EXPECT_NO_THROW(edDate(u"Date:" + each.value, ymd, hms)) << toUtf8(each.value);
        EXPECT_EQ(ymd, each.ymd) << toUtf8(each.value);
        EXPECT_EQ(hms, each.hms) << toUtf8(each.value);
    }
}

TEST_F(EdDateTest, KnowsTheTwelveMonths)
{
    for (int month = 0; month < 12; ++month) {
        Text ymd, hms;
        edDate(u"Date:1 " + gMonthName[month] + u" 2001 1:2:3", ymd, hms);
        EXPECT_EQ(ymd, (month < 9 ? u"20010" : u"2001") + decimal(month + 1) + u"01");
    }
}

TEST_F(EdDateTest, PutsTheCenturyBeforeAYearBelowAHundredAsItIsWritten)
{
    const struct {
        Text year, stored;
    } cases[] = {{u"00", u"2000"},     {u"97", u"2097"},   {u"98", u"1998"},
                 {u"99", u"1999"},     {u"100", u"100"},   {u"5", u"205"},
                 {u"32767", u"32767"}, {u"1998", u"1998"}, {u"-5", u"20-5"}};
    for (const auto& each : cases) {
        Text ymd, hms;
        edDate(u"Date:15 Feb " + each.year + u" 10:11:12", ymd, hms);
        EXPECT_EQ(ymd, each.stored + u"0215");
    }
}

TEST_F(EdDateTest, GivesTheDayTwoDigits)
{
    Text ymd, hms;
    edDate(u"Date:Sun, 7 May 2000 10:11:12", ymd, hms);
    EXPECT_EQ(ymd, u"20000507");
}

TEST_F(EdDateTest, StaysEmptyWithoutAValue)
{
    for (const Text& line : {Text(u"Date"), Text(u"Date:"), Text(u"Date:  　")}) {
        Text ymd = u"old", hms = u"old";
        edDate(line, ymd, hms);
        EXPECT_EQ(ymd, u"");
        EXPECT_EQ(hms, u"");
    }
}

TEST_F(EdDateTest, FailsOnAPieceThatIsNoNumber)
{
    EXPECT_EQ(errorOf(u"xx Feb 2000 10:11:12"), 13);
    EXPECT_EQ(errorOf(u"15 Feb abcd 10:11:12"), 13);
    EXPECT_EQ(errorOf(u"15  Feb 2000 10:11:12"), 13);
    EXPECT_EQ(errorOf(u"15 Feb  2000 10:11:12"), 13);
    EXPECT_EQ(errorOf(u"Tuesday, 15 Feb 2000 10:11:12"), 13);
}

TEST_F(EdDateTest, RunsIntoTheSixteenBitLimitWhenAPartIsMissing)
{
    for (const char16_t* value : {u"15", u"15 Feb", u"15 Feb 2000", u"15 Feb 2000 10", u"Tue,"})
        EXPECT_EQ(errorOf(value), 6) << toUtf8(value);
}

TEST_F(EdDateTest, RefusesNumbersBeyondSixteenBits)
{
    EXPECT_EQ(errorOf(u"15 Feb 32768 10:11:12"), 6);
    EXPECT_EQ(errorOf(u"40000 Feb 2000 10:11:12"), 6);
    EXPECT_EQ(errorOf(u"15 " + Text(40000, u'x') + u" 2000 10:11:12"), 6);
    EXPECT_EQ(errorOf(u"15 Feb 2000 10:11" + Text(20000, u'x')), 6);
}

TEST_F(EdDateTest, CarriesWhateverStandsInTheTail)
{
    Text ymd, hms;
    edDate(u"Date:15 Feb 2000 10:1'x", ymd, hms);
    EXPECT_EQ(hms, u"101'x00");
}

}
}
