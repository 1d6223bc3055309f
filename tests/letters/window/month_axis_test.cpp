#include "letters/window/month_axis.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

TEST(MonthAxis, HasTwelveCellsForEachYearWithLetters)
{
    const MonthAxis axis({2003, 1998, 2003, 0, 1999});
    EXPECT_EQ(axis.years(), (std::vector<int>{1998, 1999, 2003}));
    EXPECT_EQ(axis.size(), 36);
    EXPECT_EQ(axis.monthAt(0), 199801);
    EXPECT_EQ(axis.monthAt(35), 200312);
    EXPECT_EQ(axis.cellOf(199902), 13);
    EXPECT_EQ(axis.cellOf(200103), -1);
    EXPECT_EQ(axis.cellOf(199900), -1) << "a month that isn't known has no place";
}

TEST(MonthAxis, AStretchOfMonthsCoversTheCellsInside)
{
    const MonthAxis axis({1998, 2003});
    EXPECT_EQ(axis.firstCell(199911), 12);
    EXPECT_EQ(axis.lastCell(199911), 11);
    EXPECT_EQ(axis.firstCell(0), 0);
    EXPECT_EQ(axis.lastCell(999999), 23);
}

TEST(MonthAxis, MayBeEmpty)
{
    const MonthAxis axis({0});
    EXPECT_EQ(axis.size(), 0);
    EXPECT_EQ(axis.monthAt(3), 0);
    EXPECT_EQ(axis.firstCell(199801), 0);
    EXPECT_EQ(axis.lastCell(199801), -1);
}

}
}
