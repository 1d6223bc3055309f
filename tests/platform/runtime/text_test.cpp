#include "platform/runtime/text.h"

#include "support/errors.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

TEST(TextTest, TrimTakesBothBlanksAndNothingElse)
{
    const Text text = u" \u3000\ta \u3000b\r\n\u3000 ";
    EXPECT_EQ(trim(text), u"\ta \u3000b\r\n");
    EXPECT_EQ(ltrim(text), u"\ta \u3000b\r\n\u3000 ");
    EXPECT_EQ(rtrim(text), u" \u3000\ta \u3000b\r\n");
    for (const TextView blank : {u"", u" ", u"\u3000 \u3000"}) {
        EXPECT_EQ(trim(blank), u"");
        EXPECT_EQ(ltrim(blank), u"");
        EXPECT_EQ(rtrim(blank), u"");
    }
    EXPECT_EQ(trim(u"\u00A0a\u2003"), u"\u00A0a\u2003");
}

TEST(TextTest, SlicesLeaveOutWhatLiesBeyondTheEnd)
{
    EXPECT_EQ(mid(u"abc", 1), u"abc");
    EXPECT_EQ(mid(u"abc", 3), u"c");
    EXPECT_EQ(mid(u"abc", 4), u"");
    EXPECT_EQ(mid(u"abc", 99), u"");
    EXPECT_EQ(mid(u"abc", 2, 1), u"b");
    EXPECT_EQ(mid(u"abc", 2, 99), u"bc");
    EXPECT_EQ(mid(u"abc", 2, 0), u"");
    EXPECT_EQ(left(u"abc", 2), u"ab");
    EXPECT_EQ(left(u"abc", 99), u"abc");
    EXPECT_EQ(left(u"", 1), u"");
    EXPECT_EQ(right(u"abc", 2), u"bc");
    EXPECT_EQ(right(u"abc", 0), u"");
    EXPECT_EQ(right(u"abc", 99), u"abc");
}

TEST(TextTest, SlicesOfNoPlaceAreErrorFive)
{
    EXPECT_EQ(errorOf([] { mid(u"abc", 0); }), 5);
    EXPECT_EQ(errorOf([] { mid(u"abc", -1, 1); }), 5);
    EXPECT_EQ(errorOf([] { mid(u"abc", 1, -1); }), 5);
    EXPECT_EQ(errorOf([] { left(u"abc", -1); }), 5);
    EXPECT_EQ(errorOf([] { right(u"abc", -1); }), 5);
    EXPECT_EQ(errorOf([] { blanks(-1); }), 5);
}

TEST(TextTest, OverwritingKeepsTheLength)
{
    struct {
        int start;
        Text replacement;
        int length;
        Text result;
    } const table[] = {
        {1, u"xyz", 3, u"xyzde"}, {4, u"xyz", 3, u"abcxy"}, {5, u"xyz", 1, u"abcdx"},
        {2, u"x", 3, u"axcde"},   {2, u"xyz", 2, u"axyde"}, {2, u"", 3, u"abcde"},
        {2, u"xyz", 0, u"abcde"},
    };
    for (const auto& row : table) {
        Text target = u"abcde";
        overwrite(target, row.start, row.replacement, row.length);
        EXPECT_EQ(target, row.result);
    }
}

TEST(TextTest, OverwritingOutsideIsErrorFive)
{
    Text target = u"abc", empty;
    EXPECT_EQ(errorOf([&] { overwrite(target, 0, u"x", 1); }), 5);
    EXPECT_EQ(errorOf([&] { overwrite(target, 4, u"x", 1); }), 5);
    EXPECT_EQ(errorOf([&] { overwrite(target, 1, u"x", -1); }), 5);
    EXPECT_EQ(errorOf([&] { overwrite(empty, 1, u"x", 1); }), 5);
    EXPECT_EQ(target, u"abc");
}

TEST(TextTest, LengthsCountUnitsAndTheirBytes)
{
    EXPECT_EQ(length(u"aあ😀"), 4);
    EXPECT_EQ(byteLength(u"aあ😀"), 8);
    EXPECT_EQ(length(u""), 0);
}

TEST(TextTest, SmallHelpers)
{
    EXPECT_EQ(blanks(3), u"   ");
    EXPECT_EQ(blanks(0), u"");
    EXPECT_EQ(cutAtNul(TextView(u"ab\0cd", 5)), u"ab");
    EXPECT_EQ(cutAtNul(u"ab"), u"ab");
    EXPECT_EQ(decimal(0), u"0");
    EXPECT_EQ(decimal(-32768), u"-32768");
    EXPECT_EQ(decimal(9223372036854775807LL), u"9223372036854775807");
}

TEST(TextTest, Utf8GoesBothWays)
{
    const Text text = u"aé日本語ｶﾞ😀";
    EXPECT_EQ(toUtf8(text), "aé日本語ｶﾞ😀");
    EXPECT_EQ(fromUtf8("aé日本語ｶﾞ😀"), text);
    EXPECT_EQ(fromUtf8(std::string_view("a\0b", 3)), TextView(u"a\0b", 3));
}

TEST(TextTest, BrokenUtf8BecomesReplacementCharacters)
{
    EXPECT_EQ(fromUtf8("a\xFF"
                       "b"),
              u"a\uFFFDb");
    EXPECT_EQ(fromUtf8("a\xE6\x97"), u"a\uFFFD");
    EXPECT_EQ(fromUtf8("\x80"), u"\uFFFD");
}

TEST(TextTest, LoneSurrogatesBecomeReplacementCharacters)
{
    EXPECT_EQ(toUtf8(Text{u'a', char16_t(0xD83D)}), "a\uFFFD");
    EXPECT_EQ(toUtf8(Text{char16_t(0xDE00), u'b'}), "\uFFFDb");
}

}
}
