#include "platform/runtime/text.h"

#include "support/errors.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

using enum Compare;

int sign(int value)
{
    return (value > 0) - (value < 0);
}

TEST(TextCompareTest, TextModePassesOverCaseKanaTypeAndWidth)
{
    const Text table[][2] = {
        {u"a", u"A"},
        {u"a", u"ａ"},
        {u"a", u"Ａ"},
        {u"1@", u"１＠"},
        {u" ", u"　"},
        {u"あ", u"ア"},
        {u"あ", u"ｱ"},
        {u"ア", u"ｱ"},
        {u"が", u"ｶﾞ"},
        {u"ガ", u"ｶﾞ"},
        {u"ぱ", u"ﾊﾟ"},
        {u"ヴ", u"ｳﾞ"},
        {u"ゔ", u"ヴ"},
        {u"っ", u"ｯ"},
        {u"ゝ", u"ヽ"},
        {u"ー", u"ｰ"},
        {u"。「」、・", u"｡｢｣､･"},
        {u"゛゜", u"ﾞﾟ"},
        {u"|", u"｜"},
        {u"'", u"＇"},
        {u"\\", u"＼"},
        {u"α", u"Α"},
        {u"я", u"Я"},
        {u"é", u"É"},
        {u"ⅰ", u"Ⅰ"},
        {u"PostPet", u"ｐｏｓｔｐｅｔ"},
        {u"", u""},
    };
    for (const auto& row : table) {
        EXPECT_EQ(compareText(row[0], row[1], TextMode), 0) << row[0].size();
        EXPECT_EQ(compareText(row[1], row[0], TextMode), 0);
    }
}

TEST(TextCompareTest, TextModeMindsWhatTheJapaneseLocaleMinds)
{
    const Text table[][2] = {
        {u"か", u"が"},   {u"は", u"ぱ"},     {u"ば", u"ぱ"}, {u"ｶ", u"ガ"}, {u"つ", u"っ"},
        {u"ア", u"ァ"},   {u"e", u"é"},       {u"a", u"a "},  {u"a", u" a"}, {u"’", u"'"},
        {u"カ゛", u"ガ"}, {u"カー", u"カア"}, {u"一", u"ー"}, {u"", u" "},
    };
    for (const auto& row : table) {
        const int order = sign(compareText(row[0], row[1], TextMode));
        EXPECT_NE(order, 0);
        EXPECT_EQ(sign(compareText(row[1], row[0], TextMode)), -order);
    }
}

TEST(TextCompareTest, TextModeOrderFollowsTheFoldedTexts)
{
    EXPECT_LT(compareText(u"a", u"B", TextMode), 0);
    EXPECT_GT(compareText(u"b", u"Ａ", TextMode), 0);
    EXPECT_LT(compareText(u"ab", u"ABC", TextMode), 0);
    EXPECT_LT(compareText(u"あ", u"ｲ", TextMode), 0);
    EXPECT_LT(compareText(u"ｶﾞ", u"キ", TextMode), 0);
}

TEST(TextCompareTest, BinaryIsByUnit)
{
    EXPECT_EQ(compareText(u"abc", u"abc", Binary), 0);
    EXPECT_GT(compareText(u"a", u"A", Binary), 0);
    EXPECT_LT(compareText(u"a", u"ab", Binary), 0);
    EXPECT_NE(compareText(u"あ", u"ア", Binary), 0);
}

TEST(TextCompareTest, BinarySearch)
{
    EXPECT_EQ(inStr(u"abcabc", u"bc", Binary), 2);
    EXPECT_EQ(inStr(u"abcabc", u"bc", Binary, 3), 5);
    EXPECT_EQ(inStr(u"abcabc", u"bc", Binary, 5), 5);
    EXPECT_EQ(inStr(u"abcabc", u"bc", Binary, 6), 0);
    EXPECT_EQ(inStr(u"abc", u"B", Binary), 0);
    EXPECT_EQ(inStr(u"", u"a", Binary), 0);
    EXPECT_EQ(inStr(u"abc", u"a", Binary, 99), 0);
}

TEST(TextCompareTest, AnEmptyTextIsFoundWhereTheSearchStarts)
{
    for (const Compare mode : {Binary, TextMode}) {
        EXPECT_EQ(inStr(u"abc", u"", mode), 1);
        EXPECT_EQ(inStr(u"abc", u"", mode, 3), 3);
        EXPECT_EQ(inStr(u"abc", u"", mode, 4), 4);
        EXPECT_EQ(inStr(u"abc", u"", mode, 5), 0);
        EXPECT_EQ(inStr(u"", u"", mode), 1);
    }
    EXPECT_EQ(inStrB(u"ab", u"", 5), 5);
    EXPECT_EQ(inStrB(u"ab", u"", 6), 0);
}

TEST(TextCompareTest, ASearchFromNoPositionIsErrorFive)
{
    EXPECT_EQ(errorOf([] { inStr(u"abc", u"a", Binary, 0); }), 5);
    EXPECT_EQ(errorOf([] { inStr(u"abc", u"a", TextMode, -1); }), 5);
    EXPECT_EQ(errorOf([] { inStrB(u"abc", u"a", 0); }), 5);
}

TEST(TextCompareTest, TextModeSearchTellsThePlaceInTheOriginal)
{
    struct {
        Text text, what;
        int start, position;
    } const table[] = {
        {u"xxABC", u"ａｂ", 1, 3},  {u"ｶﾞｷﾞｸﾞ", u"ギ", 1, 3}, {u"ｶﾞｷﾞｸﾞ", u"グ", 1, 5},
        {u"ｶﾞｷﾞ", u"キ", 1, 0},     {u"ｶﾞ", u"か", 1, 0},     {u"ｶﾞ", u"゛", 1, 0},
        {u"ｱﾞ", u"゛", 1, 2},       {u"がぎ", u"ｷﾞ", 1, 2},   {u"aaAB", u"ab", 1, 3},
        {u"a|b", u"｜", 1, 2},      {u"a｜b|", u"|", 3, 4},   {u"abc", u"abcd", 1, 0},
        {u"日本語", u"本語", 1, 2}, {u"", u"a", 1, 0},        {u"ABab", u"ab", 2, 3},
        {u"ｶﾞ", u"ﾞ", 2, 2},
    };
    for (const auto& row : table)
        EXPECT_EQ(inStr(row.text, row.what, TextMode, row.start), row.position);
}

TEST(TextCompareTest, ByteSearchGoesByBytePositions)
{
    EXPECT_EQ(inStrB(u"abc", u"a"), 1);
    EXPECT_EQ(inStrB(u"abc", u"c"), 5);
    EXPECT_EQ(inStrB(u"abcabc", u"c", 6), 11);
    EXPECT_EQ(inStrB(u"abc", u"d"), 0);
    EXPECT_EQ(inStrB(u"abc", u"a", 99), 0);
}

TEST(TextCompareTest, AByteMatchMayBeginInTheMiddleOfAUnit)
{
    // 34 12 78 56: the bytes 12 78 are the code unit 7812.
    EXPECT_EQ(inStrB(u"\u1234\u5678", u"\u7812"), 2);
    EXPECT_EQ(inStrB(u"\u1234\u5678", u"\u7812", 3), 0);
}

}
}
