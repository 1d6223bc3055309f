#include "platform/runtime/int16.h"

#include "support/errors.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

TEST(Int16Test, HoldsTheWholeRange)
{
    EXPECT_EQ(Int16(), 0);
    EXPECT_EQ(Int16(32767), 32767);
    EXPECT_EQ(Int16(-32768), -32768);
}

TEST(Int16Test, OverflowsAreErrorSix)
{
    EXPECT_EQ(errorOf([] { Int16(32768); }), 6);
    EXPECT_EQ(errorOf([] { Int16(-32769); }), 6);
    EXPECT_EQ(errorOf([] { Int16(65536); }), 6);
}

TEST(Int16Test, AStepOverTheEdgeFailsAndLeavesTheValue)
{
    Int16 high(32767), low(-32768);
    EXPECT_EQ(errorOf([&] { ++high; }), 6);
    EXPECT_EQ(errorOf([&] { high += 1; }), 6);
    EXPECT_EQ(errorOf([&] { --low; }), 6);
    EXPECT_EQ(errorOf([&] { low -= 1; }), 6);
    EXPECT_EQ(high, 32767);
    EXPECT_EQ(low, -32768);
}

TEST(Int16Test, StepsWithinTheRangeCount)
{
    Int16 value(10);
    value += 5;
    value -= 20;
    ++value;
    --value;
    EXPECT_EQ(value, -5);
}

TEST(Int16ArrayTest, StartsWithEmptyElements)
{
    const CheckedArray<int, 3> items;
    EXPECT_EQ(items.size(), 3);
    for (const int item : items)
        EXPECT_EQ(item, 0);
}

TEST(Int16ArrayTest, AnIndexOutsideIsErrorNine)
{
    CheckedArray<int, 3> items;
    const auto& constant = items;
    items[0] = 1;
    items[2] = 3;
    EXPECT_EQ(constant[0] + constant[2], 4);
    for (const int outside : {-1, 3, 32767, -32768}) {
        EXPECT_EQ(errorOf([&] { items[outside] = 1; }), 9) << outside;
        EXPECT_EQ(errorOf([&] { (void)constant[outside]; }), 9) << outside;
    }
}

}
}
