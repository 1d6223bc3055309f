#include "converter/separator_line.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

TEST(SeparatorLineTest, EndsInADate)
{
    for (const char* line :
         {"From taro@example.com Tue Feb 15 10:11:12 2000", "From - Tue Feb 15 10:11:12 2000",
          "From ???@??? Tue Feb 15 10:11:12 2000", "From a@b Tue Feb  5 10:11 2000",
          "From a@b Tue Feb 15 10:11:12 JST 2000", "From a@b Tue Feb 15 10:11:12 2000 +0900",
          "From a@b Tue, 15 Feb 2000 10:11:12 +0900", "From a b Tue Feb 15 10:11:12 2000",
          "From a@b Tue Feb 15 10:11:12 2000 remote from host"})
        EXPECT_TRUE(isSeparatorLine(line)) << line;
}

TEST(SeparatorLineTest, LineOfALetterIsNone)
{
    for (const char* line :
         {"From here on it rains", "From", "From ", "From Tue Feb 15 we are away",
          "From Monday Feb 15 10:11 on", "from a@b Tue Feb 15 10:11:12 2000",
          ">From a@b Tue Feb 15 10:11:12 2000", "From: a@b Tue Feb 15 10:11:12 2000",
          "From 15 Feb 2000"})
        EXPECT_FALSE(isSeparatorLine(line)) << line;
}

TEST(SeparatorLineTest, GivesSenderAndDate)
{
    const char* line = "From taro@example.com Tue Feb 15 10:11:12 2000";
    EXPECT_EQ(separatorSender(line), "taro@example.com");
    EXPECT_EQ(separatorDate(line), "Tue Feb 15 10:11:12 2000");
    EXPECT_EQ(separatorSender("From ???@??? Tue Feb 15 10:11:12 2000"), "");
    EXPECT_EQ(separatorSender("From - Tue Feb 15 10:11:12 2000"), "");
    EXPECT_EQ(separatorDate("From MAILER"), "");
}

TEST(SeparatorLineTest, StuffedLineLosesOneMark)
{
    EXPECT_EQ(unstuffed(">From x"), "From x");
    EXPECT_EQ(unstuffed(">>From x"), ">From x");
    EXPECT_EQ(unstuffed("> From x"), "> From x");
    EXPECT_EQ(unstuffed("From x"), "From x");
    EXPECT_EQ(unstuffed(">"), ">");
}

}
}
