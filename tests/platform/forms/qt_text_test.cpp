#include "platform/forms/qt_text.h"

#include <gtest/gtest.h>

namespace tolvek::test {

namespace {

struct Painted {
    TextView text;
    TextView painted;
};

class QtTextPaintedTest : public testing::TestWithParam<Painted> {};

TEST_P(QtTextPaintedTest, EveryFormOfLineEndIsOneBreak)
{
    EXPECT_EQ(fromQt(paintedText(GetParam().text)), GetParam().painted);
}

INSTANTIATE_TEST_SUITE_P(Breaks, QtTextPaintedTest,
                         testing::Values(Painted{u"", u""}, Painted{u"a", u"a"},
                                         Painted{u"a\r\nb", u"a\nb"}, Painted{u"a\n\rb", u"a\nb"},
                                         Painted{u"a\rb", u"a\nb"}, Painted{u"a\nb", u"a\nb"},
                                         Painted{u"a\n\nb", u"a\n\nb"},
                                         Painted{u"a\r\rb", u"a\n\nb"},
                                         Painted{u"a\r\n\r\nb", u"a\n\nb"},
                                         Painted{u"a\n\r\n\rb", u"a\n\nb"}, Painted{u"\r\n", u"\n"},
                                         Painted{u"\r", u"\n"}));

TEST(QtTextTest, TheMarkTakesTheBreaksPlace)
{
    EXPECT_EQ(fromQt(paintedText(u"a\r\nb\rc", u' ')), u"a b c");
}

TEST(QtTextTest, GoesThroughQtUnitByUnit)
{
    const Text text{u'a', u'\0', u'漢', static_cast<char16_t>(0xD800), u'z'};
    EXPECT_EQ(fromQt(toQt(text)), text);
}

}

}
