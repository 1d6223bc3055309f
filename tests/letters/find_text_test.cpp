#include "letters/find_text.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

TEST(FindTextTest, FindsAWordAtEveryPlaceOfALongText)
{
    for (const TextView word : {u"x", u"xy", u"xyx", u"wxyz"})
        for (std::size_t before = 0; before < 70; ++before)
            for (const std::size_t after : {0, 1, 40}) {
                const Text text = Text(before, u'a') + Text(word) + Text(after, u'b');
                EXPECT_EQ(findText(text, word), before) << before << ' ' << after;
            }
}

TEST(FindTextTest, GoesOnAfterAPlaceThatOnlyBeginsAndEndsLikeTheWord)
{
    const Text text = Text(40, u'a') + u"xbyxcy" + Text(40, u'a') + u"x-y";
    EXPECT_EQ(findText(text, u"x-y"), text.size() - 3);
    EXPECT_EQ(findText(text, u"x+y"), Text::npos);
}

TEST(FindTextTest, StartsWhereItIsTold)
{
    EXPECT_EQ(findText(u"abab", u"ab", 1), 2u);
    EXPECT_EQ(findText(u"abab", u"ab", 3), Text::npos);
    EXPECT_EQ(findText(u"abab", u"ab", 9), Text::npos);
}

TEST(FindTextTest, AnEmptyOrTooLongWordIsNowhere)
{
    EXPECT_EQ(findText(u"ab", u""), Text::npos);
    EXPECT_EQ(findText(u"ab", u"abc"), Text::npos);
    EXPECT_EQ(findText(u"", u"a"), Text::npos);
}

}
}
