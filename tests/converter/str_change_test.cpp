#include "converter/str_change.h"

#include "converter/temp_reader.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

struct Row {
    TextView given;
    TextView expected;
};

std::string changed(TextView text, std::size_t limit = 4608)
{
    return utf8OfAnsi(strChange(toAnsi(text), limit).ansi);
}

TEST(StrChangeTest, TurnsHeadingsIntoReadableText)
{
    const Row rows[] = {
        {u"Subject:はなです", u"Subject:はなです"},
        {u"Subject:=?utf-8?B?44GC?=", u"Subject:あ"},
        {u"=?utf-8?B?44GC?= =?utf-8?B?44GE?=", u"あい"},
        {u"\x1b$B$\"\x1b(B", u"あ"},
        {u"=?iso-2022-jp?B?GyRCJCIbKEI=?= \x1b$B$$\x1b(B", u"あ い"},
        {u"O'Neil's", u"O’Neil’s"},
        {u"=?us-ascii?Q?O'Neil?=", u"O’Neil"},
        {u"=?utf-8?B?8J+YgA==?=", u"〓"},
        {u"=?utf-8?B?AGEA?=", u" a "},
        {u"no word =? here ?=", u"no word =? here ?="},
    };
    for (const Row& row : rows)
        EXPECT_EQ(changed(row.given), toUtf8(row.expected)) << toUtf8(row.given);
}

TEST(StrChangeTest, LeavesEncodedWordsOfATextAlone)
{
    EXPECT_EQ(changed(u"see =?utf-8?B?44GC?=\r\nit's so\r\n"),
              "see =?utf-8?B?44GC?=\r\nit’s so\r\n");
}

TEST(StrChangeTest, DecodesEscapesInATextAndKeepsItsLineEnds)
{
    EXPECT_EQ(changed(u"\x1b$B$\"\r\nb\r\n"), "あ\r\nb\r\n");
}

TEST(StrChangeTest, CutsAtTheLimitOnAWholeCharacter)
{
    const ChangedText text = strChange(toAnsi(u"aあい"), 4);
    EXPECT_EQ(utf8OfAnsi(text.ansi), "aあ");
    EXPECT_EQ(text.length, 2);
}

TEST(StrChangeTest, GrowingQuotesNeverPassTheLimit)
{
    const ChangedText text = strChange(std::string(4608, '\''), 4608);
    EXPECT_EQ(text.ansi.size(), 4608u);
    EXPECT_EQ(text.length, 2304);
}

TEST(StrChangeTest, CountsCharactersAndNotBytes)
{
    EXPECT_EQ(strChange(toAnsi(u"あab"), 4608).length, 3);
    EXPECT_EQ(strChange("", 4608).length, 0);
}

}
}
