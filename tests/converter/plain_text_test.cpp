#include "converter/plain_text.h"

#include "platform/runtime/codepage932.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

TEST(PlainTextTest, ControlsThatWouldEndFileOrTextBecomeBlanks)
{
    EXPECT_EQ(plainLine(TextView(u"a\0b\x1A"
                                 u"c\x1B"
                                 u"d\te",
                                 9)),
              u"a b c d\te");
}

TEST(PlainTextTest, SingleQuoteIsNeverHandedOn)
{
    EXPECT_EQ(plainLine(u"it's"), u"it’s");
}

TEST(PlainTextTest, InvisibleCharactersGoAndMarksAreTakenIn)
{
    EXPECT_EQ(plainLine(u"a\u200B\uFE0Fb\uFEFF"), u"ab");
    EXPECT_EQ(plainLine(u"か\u3099ハ\u309A"), u"がパ");
    EXPECT_EQ(plainLine(u"\u3099"), u"\u3099");
    EXPECT_EQ(plainLine(u"\uFA19"), u"\uFA19");
}

std::string plainLines(TextView text)
{
    std::string lines;
    appendPlainLines(lines, text);
    return lines;
}

TEST(PlainTextTest, LinesEndHoweverTheyEnd)
{
    EXPECT_EQ(plainLines(u"a\r\nb\nc\rd\u2028e"), "a\nb\nc\nd\ne\n");
    EXPECT_EQ(plainLines(u"a\n\n"), "a\n\n");
    EXPECT_TRUE(plainLines(u"").empty());
}

TEST(PlainTextTest, BlanksOfBothWidthsAreBlank)
{
    EXPECT_TRUE(isBlankAnsi(plainLines(u" \u3000\n\t\u00A0\n")));
    EXPECT_FALSE(isBlankAnsi(plainLines(u"\u3000@\n")));
    // The second byte of 早 and "@" look like a wide blank.
    EXPECT_EQ(withoutBlanks(toAnsi(u"a \u3000早@\n")), toAnsi(u"a早@"));
}

TEST(PlainTextTest, PrefixNeverHalvesACharacter)
{
    EXPECT_EQ(wholePrefix("a\x82\xA0", 2), "a");
    EXPECT_EQ(wholePrefix("a\x82\xA0", 3), "a\x82\xA0");
    EXPECT_EQ(wholePrefix("\xB1\xB2", 1), "\xB1");
    EXPECT_EQ(wholePrefix("a\x82", 9), "a");
}

TEST(PlainTextTest, CharacterWithoutAFormGetsTheNearest)
{
    EXPECT_EQ(plainLine(u"für Größe"), u"fur Grosse");
    EXPECT_EQ(plainLine(u"e\u0323\u0301 x\u0302"), u"e x");
    EXPECT_EQ(plainLine(u"½ ² ﬁ Č © €"), u"1/2 2 fi C (C) EUR");
    EXPECT_EQ(plainLine(u"a\uE63Eb"), u"a〓b");
    EXPECT_EQ(plainLine(u"①㈱髙桜 é"), u"①㈱髙桜 e");
    EXPECT_EQ(foldedLine(u"ü"), u"ü");
}

}
}
