#include "platform/runtime/numbers.h"

#include "support/errors.h"

#include <gtest/gtest.h>
#include <limits>

namespace tolvek::test {
namespace {

TEST(FormatTest, NumbersByPattern)
{
    struct {
        double value;
        Text pattern, text;
    } const table[] = {
        {0, u"00", u"00"},
        {5, u"00", u"05"},
        {12, u"00", u"12"},
        {123, u"00", u"123"},
        {7, u"000", u"007"},
        {0, u"0000", u"0000"},
        {12345, u"0000", u"12345"},
        {-5, u"00", u"-05"},
        {-5, u"000", u"-005"},
        {0, u"##0.00", u"0.00"},
        {0.125, u"##0.00", u"0.13"},
        {-0.125, u"##0.00", u"-0.13"},
        {0.285, u"##0.00", u"0.29"},
        {1.005, u"##0.00", u"1.01"},
        {0.124, u"##0.00", u"0.12"},
        {99.995, u"##0.00", u"100.00"},
        {100, u"##0.00", u"100.00"},
        {33.333333, u"##0.00", u"33.33"},
        {1234.5, u"##0.00", u"1234.50"},
        {-0.001, u"##0.00", u"0.00"},
        {0.5, u"00", u"01"},
        {1.5, u"0", u"2"},
        {2.5, u"0", u"3"},
        {-2.5, u"0", u"-3"},
        {0.05, u"0", u"0"},
        {0.5, u"#.##", u".5"},
        {0, u"#", u""},
        {1.25, u"0.0#", u"1.25"},
        {1, u"0.0#", u"1.0"},
        {1e20, u"0", u"100000000000000000000"},
        {0.3, u".0", u".3"},
        {3, u"0.", u"3."},
        {9.99, u"0.0", u"10.0"},
        {0.009, u"0.00", u"0.01"},
        {1e-20, u"0.00", u"0.00"},
    };
    for (const auto& row : table)
        EXPECT_EQ(toUtf8(format(row.value, row.pattern)), toUtf8(row.text)) << row.value;
}

TEST(FormatTest, ATextThatIsANumberIsConvertedFirst)
{
    EXPECT_EQ(format(u"5", u"00"), u"05");
    EXPECT_EQ(format(u" ５ ", u"00"), u"05");
    EXPECT_EQ(format(u"0.125", u"##0.00"), u"0.13");
    EXPECT_EQ(format(u"&H1F", u"000"), u"031");
}

TEST(FormatTest, AnyOtherTextComesBackAsItIs)
{
    for (const TextView text : {u"", u" ", u"abc", u"5 -0800", u"2000/01/01"})
        EXPECT_EQ(format(text, u"00"), text);
}

TEST(FormatTest, APatternOfSomethingElseIsErrorFive)
{
    for (const TextView pattern : {u"", u"0.0.0", u"yyyy", u"0,000"})
        EXPECT_EQ(errorOf([&] { format(1, pattern); }), 5) << toUtf8(pattern);
    EXPECT_EQ(errorOf([] { format(std::numeric_limits<double>::infinity(), u"0"); }), 6);
}

}
}
