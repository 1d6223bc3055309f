#include "dao_fixture.h"

namespace tolvek::test {
namespace {

TEST(ValueTest, ANullIsError94WhateverItIsTurnedInto)
{
    const Value null;
    EXPECT_TRUE(null.isNull());
    EXPECT_EQ(errorOf([&] { null.text(); }), 94);
    EXPECT_EQ(errorOf([&] { null.int16(); }), 94);
    EXPECT_EQ(errorOf([&] { null.int32(); }), 94);
    EXPECT_EQ(errorOf([&] { null.boolean(); }), 94);
}

TEST(ValueTest, NumbersReadAsDecimalsAndYesNoAsWords)
{
    EXPECT_EQ(Value(-12, dbLong).text(), u"-12");
    EXPECT_EQ(Value(-1, dbBoolean).text(), u"True");
    EXPECT_EQ(Value(0, dbBoolean).text(), u"False");
    EXPECT_EQ(Value(7, dbInteger).int16(), 7);
    EXPECT_EQ(Value(70000, dbLong).int32(), 70000);
    EXPECT_EQ(errorOf([] { Value(70000, dbLong).int16(); }), 6);
}

TEST(ValueTest, TextsBecomeNumbersByTheTextRules)
{
    EXPECT_EQ(Value(Text(u" 12 ")).int16(), 12);
    EXPECT_EQ(errorOf([] { Value(Text(u"")).int16(); }), 13);
    EXPECT_EQ(errorOf([] { Value(Text(u"40000")).int16(); }), 6);
    EXPECT_EQ(Value(Text(u"40000")).int32(), 40000);
}

TEST(ValueTest, AnyNumberButZeroIsTrueAndSoIsTheWord)
{
    EXPECT_TRUE(Value(5, dbLong).boolean());
    EXPECT_TRUE(Value(Text(u"True")).boolean());
    EXPECT_FALSE(Value(Text(u"False")).boolean());
    EXPECT_TRUE(Value(Text(u"-1")).boolean());
    EXPECT_FALSE(Value(Text(u"0")).boolean());
    EXPECT_EQ(errorOf([] { Value(Text(u"maybe")).boolean(); }), 13);
}

}
}
