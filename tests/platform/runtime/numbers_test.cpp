#include "platform/runtime/numbers.h"

#include "support/errors.h"

#include <gtest/gtest.h>
#include <limits>

namespace tolvek::test {
namespace {

TEST(NumbersTest, FormsThatAreNumbers)
{
    struct {
        Text text;
        double value;
    } const table[] = {
        {u"0", 0},
        {u"00", 0},
        {u"12", 12},
        {u" 12 ", 12},
        {u"　12　", 12},
        {u"+5", 5},
        {u"-5", -5},
        {u"1,234", 1234},
        {u"12,34,5", 12345},
        {u"1,234.5", 1234.5},
        {u"1.5", 1.5},
        {u".5", 0.5},
        {u"5.", 5},
        {u"-.5", -0.5},
        {u"1e3", 1000},
        {u"1E+3", 1000},
        {u"15e-1", 1.5},
        {u"2d2", 200},
        {u"1.5D1", 15},
        {u"&H10", 16},
        {u"&hff", 255},
        {u"&O17", 15},
        {u"&o7", 7},
        {u"１２", 12},
        {u"－１，２３４．５", -1234.5},
        {u"＋５", 5},
        {u"１ｅ２", 100},
        {u"＆Ｈ１Ｆ", 31},
        {u"007", 7},
        {u"1e-999", 0},
    };
    for (const auto& row : table) {
        EXPECT_DOUBLE_EQ(toDouble(row.text), row.value) << toUtf8(row.text);
        EXPECT_TRUE(isNumeric(row.text)) << toUtf8(row.text);
    }
}

TEST(NumbersTest, AnythingElseIsErrorThirteen)
{
    for (const TextView text :
         {u"",    u" ",    u"　",    u"a",   u"5a",  u"a5",    u"5 5",   u"- 5",   u"--5",  u"+-5",
          u"+",   u"-",    u".",     u",",   u",5",  u"1.2.3", u"1.2,3", u"1e",    u"1e+",  u"e5",
          u"&",   u"&H",   u"&O",    u"&HG", u"&O8", u"&H1G",  u"&10",   u"&B1",   u"-&H1", u"&H-1",
          u"\t5", u"5\t",  u"5\r\n", u"(5)", u"5-",  u"5+",    u"\\5",   u"¥5",    u"￥5",  u"$5",
          u"5%",  u"0x10", u"inf",   u"nan", u"十",  u"Ⅴ",     u"①",     u"12:30", u"True"}) {
        EXPECT_EQ(errorOf([&] { toInt16(text); }), 13) << toUtf8(text);
        EXPECT_EQ(errorOf([&] { toInt32(text); }), 13) << toUtf8(text);
        EXPECT_EQ(errorOf([&] { toDouble(text); }), 13) << toUtf8(text);
        EXPECT_FALSE(isNumeric(text)) << toUtf8(text);
    }
}

TEST(NumbersTest, IntegersHaveTheirRanges)
{
    EXPECT_EQ(toInt16(u"32767"), 32767);
    EXPECT_EQ(toInt16(u"-32768"), -32768);
    EXPECT_EQ(toInt16(u"32767.4"), 32767);
    EXPECT_EQ(toInt32(u"2147483647"), 2147483647);
    EXPECT_EQ(toInt32(u"-2147483648"), std::numeric_limits<std::int32_t>::min());
    for (const TextView text : {u"32768", u"-32769", u"32767.5", u"1e5", u"99999999999"})
        EXPECT_EQ(errorOf([&] { toInt16(text); }), 6) << toUtf8(text);
    for (const TextView text : {u"2147483648", u"-2147483649", u"1e10"})
        EXPECT_EQ(errorOf([&] { toInt32(text); }), 6) << toUtf8(text);
    EXPECT_EQ(errorOf([] { toDouble(u"1e999"); }), 6);
}

TEST(NumbersTest, BitsFillTheInteger)
{
    EXPECT_EQ(toInt16(u"&HFFFF"), -1);
    EXPECT_EQ(toInt16(u"&H8000"), -32768);
    EXPECT_EQ(toInt16(u"&O177777"), -1);
    EXPECT_EQ(toInt32(u"&HFFFF"), 65535);
    EXPECT_EQ(toInt32(u"&HFFFFFFFF"), -1);
    EXPECT_EQ(toDouble(u"&HFFFF"), 65535);
    EXPECT_EQ(errorOf([] { toInt16(u"&H10000"); }), 6);
    EXPECT_EQ(errorOf([] { toInt32(u"&H100000000"); }), 6);
}

TEST(NumbersTest, HalvesRoundToTheEvenNeighbour)
{
    struct {
        Text text;
        int value;
    } const table[] = {
        {u"0.5", 0},   {u"1.5", 2},   {u"2.5", 2},  {u"3.5", 4},  {u"-0.5", 0},
        {u"-1.5", -2}, {u"-2.5", -2}, {u"2.51", 3}, {u"2.49", 2}, {u"5e-1", 0},
    };
    for (const auto& row : table) {
        EXPECT_EQ(toInt16(row.text), row.value) << toUtf8(row.text);
        EXPECT_EQ(toInt32(row.text), row.value) << toUtf8(row.text);
    }
    EXPECT_EQ(errorOf([] { toInt16(u"32767.5"); }), 6);
    EXPECT_EQ(errorOf([] { toInt16(u"-32768.6"); }), 6);
    EXPECT_EQ(toInt16(u"-32768.5"), -32768);
}

}
}
