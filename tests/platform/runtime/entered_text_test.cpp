#include "platform/runtime/codepage932.h"
#include "platform/runtime/entered_text.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

struct Entry {
    Text typed, line;
};

TEST(EnteredTextTest, ALineEndsAtTheFirstLineEndAndHasNoControlCharacters)
{
    const Entry table[] = {
        {u"", u""},
        {u"hanako@example.jp\r\n", u"hanako@example.jp"},
        {u"first\nsecond", u"first"},
        {u"first\rsecond", u"first"},
        {u"first\u0085second", u"first"},
        {u"first\u2028second", u"first"},
        {u"first\u2029second", u"first"},
        {u"\r\nfirst", u""},
        {u"a\tb\x1A\x1B\x7F\x0B\x0C\u0080\u009F"
         u"c",
         u"abc"},
        {Text(TextView(u"a\0b", 3)), u"ab"},
    };
    for (const Entry& entry : table)
        EXPECT_EQ(enteredLine(entry.typed), entry.line) << toUtf8(entry.typed);
}

TEST(EnteredTextTest, SeveralLinesKeepTheirLineEndsAndTabs)
{
    EXPECT_EQ(enteredLines(u"a\r\n\tb\x1A\nc"), u"a\r\n\tb\nc");
    EXPECT_EQ(enteredLines(u"a\u2028b\u2029c\u0085"
                           u"d"),
              u"a\nb\nc\nd");
    EXPECT_EQ(enteredLines(u"か\u3099〜\r"), u"が～\r");
}

TEST(EnteredTextTest, WhatHasNoFormIsDropped)
{
    EXPECT_EQ(enteredLine(u"a한b\u00E9c\U0001F431d\u200Be\uFEFFf\u3099"), u"abcdef");
    EXPECT_EQ(enteredLine(u"〜−‖¢£¬—か\u3099a\u00A0b"), u"～－∥￠￡￢―がa b");
    EXPECT_EQ(enteredLine(u"e\u0301x"), u"x") << "the letter with its accent is one character";
    EXPECT_EQ(enteredLine(Text(u"a") + char16_t(0xD83D) + u"b" + char16_t(0xDE00)), u"ab");
}

TEST(EnteredTextTest, WhatWasEnteredIsEnteredAgainAsItIs)
{
    for (int unit = 0; unit < 0x10000; ++unit) {
        const Text typed = u"か" + Text(1, static_cast<char16_t>(unit)) + u"\u3099";
        const Text once = enteredLine(typed);
        ASSERT_EQ(enteredLine(once), once) << unit;
        ASSERT_TRUE(fitsAnsi(once)) << unit;
    }
}

}
}
