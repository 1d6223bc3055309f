#include "browse/subject_line.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

SubjectLine received(const Text& name)
{
    return {u"20000215", u"101112", 0, false, name, u"受取", u"  件名 "};
}

Text rowOf(const SubjectLine& line)
{
    Text row;
    edmsgSubject(line, row);
    return row;
}

TEST(SubjectLineTest, AReceivedMailShowsItsSenderAndASentOneItsReceiver)
{
    SubjectLine line = received(u"花子");
    EXPECT_EQ(rowOf(line), u" 2000/02/15 10:11:12 受　　差出人：花子" + blanks(16) + u"件名");
    line.SndRcvFlag = true;
    EXPECT_EQ(rowOf(line), u" 2000/02/15 10:11:12 　送　受取人：受取" + blanks(16) + u"件名");
}

TEST(SubjectLineTest, SubjectsStandInOneColumnWhileNamesAreShort)
{
    for (const Text& name : {Text(u"a"), Text(u"花子"), Text(u"ﾊﾅｺ"), Text(u"①②③"), Text()}) {
        const Text row = rowOf(received(name));
        EXPECT_EQ(ansiLength(left(row, length(row) - 2)), 55) << toUtf8(row);
        EXPECT_EQ(right(row, 2), u"件名");
    }
}

TEST(SubjectLineTest, ANameOfExactlyTheWidthGetsNoBlanksAndALongerOnePushesTheSubject)
{
    // 21 bytes of date and time, 14 of the direction, one blank after the name.
    const Text exact(55 - 21 - 14 - 1, u'x');
    EXPECT_EQ(right(rowOf(received(exact)), 4), u"x 件名");
    const Text longer = exact + u"yy";
    const Text row = rowOf(received(longer));
    EXPECT_EQ(right(row, 5), u"yy 件名");
    EXPECT_EQ(ansiLength(row), 55 + 2 + 4);
}

TEST(SubjectLineTest, NamesAndSubjectsAreTrimmed)
{
    EXPECT_EQ(rowOf(received(u" 　花子　 ")), rowOf(received(u"花子")));
}

TEST(SubjectLineTest, AStoredTimeOfFiveDigitsShowsAsItIsCut)
{
    SubjectLine line = received(u"a");
    line.HMS = u"90500";
    EXPECT_EQ(rowOf(line).substr(0, 21), u" 2000/02/15 90:50:0 受");
}

}
}
