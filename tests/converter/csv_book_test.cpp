#include "converter/csv_book.h"

#include "converter/friend_reader.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

const std::vector<ExpectedFriends>& table()
{
    static const std::vector<ExpectedFriends> rows{
        {"pets_sjis.csv",
         {{"9", "クッキー", "たろう", "taro@example.com", 12},
          {"2", "ミルク", "山口さくら", "sakura@example.org", 3}}},
        {"pets_utf8.csv",
         {{"4", "ソラ", "みなみ①号", "minami@example.jp", 7},
          {"0", "ポチ", "にいさん", "niisan@example.com", 0}}},
        {"pets_utf8_mark.csv", {{"1", "ベル", "表 なおみ", "naomi@example.org", 0}}},
        {"pets_utf16.csv", {{"8", "ソーダ", "能登ソノ", "sono@example.jp", 0}}},
        {"quotes.csv",
         {{"7", "Pip ’the’ pet", "Tom, Anne Brown", "tom.anne@example.org", 1},
          {"1", "open ’quote", "in the middle", "middle@example.com", 2}}},
        {"broken_quotes.csv",
         {{"9", "Max", "Ken", "after@example.org", 1},
          {"3", "ガンモ", "last", "last@example.org", 2}}},
        {"other_columns.csv", {}},
    };
    return rows;
}

class CsvBookCorpusTest : public testing::TestWithParam<ExpectedFriends> {};

TEST_P(CsvBookCorpusTest, BecomesTheseFriends)
{
    EXPECT_EQ(friendsOfFile(GetParam().file), GetParam().friends);
}

INSTANTIATE_TEST_SUITE_P(CsvBook, CsvBookCorpusTest, testing::ValuesIn(table()));

TEST(CsvBookTest, TheCountIsANumberOrNoneIsThere)
{
    for (const auto& [count, mails] :
         std::vector<std::pair<std::string, int>>{{"", 0},
                                                  {",", 0},
                                                  {", 7 ", 7},
                                                  {",\"1,234\"", 1234},
                                                  {",32767", 32767},
                                                  {",32768", 0},
                                                  {",-1", 0},
                                                  {",99999999999999999999", 0}})
        EXPECT_EQ(friendsOf("a.csv", "1,p,n,a@example.com" + count),
                  (ReadFriends{{"1", "p", "n", "a@example.com", mails}}))
            << count;
    for (const char* count : {"many", "1x", "2024-01-01"})
        EXPECT_EQ(friendsOf("a.csv", "1,p,n,a@example.com," + std::string(count)), ReadFriends{});
}

TEST(CsvBookTest, OnlyTheKnownCodesAreKinds)
{
    for (const char* code : {"1", "2", "3", "4", "6", "7", "8", "9"})
        EXPECT_EQ(friendsOf("a.csv", std::string(code) + ",,,a@example.com").front().kind, code);
    for (const char* code : {"", "0", "5", "10", "くま"})
        EXPECT_EQ(friendsOf("a.csv", std::string(code) + ",,,a@example.com").front().kind, "0");
}

TEST(CsvBookTest, LinesEndInThreeWaysAndEmptyOnesAreNone)
{
    EXPECT_EQ(friendsOf("a.csv", "\r\n\n1,,A,a@x.example\r1,,B,b@x.example\n\n1,,C,c@x.example\r\n")
                  .size(),
              3u);
}

TEST(CsvBookTest, ARecordOfOtherColumnsIsNoFriend)
{
    EXPECT_EQ(friendsOf("a.csv", "1,p,n,a@example.com,1,more\n1,a@example.com\na@example.com\n"),
              ReadFriends{});
    EXPECT_EQ(friendsOf("a.csv", "1,p,n,a@example.com,1,,, \"\"\n").size(), 1u);
}

TEST(CsvBookTest, AnEndlessQuoteCostsItsLine)
{
    const std::string endless = "1,\"" + std::string(100000, 'x') + "\n1,,n,a@example.com\n";
    EXPECT_EQ(friendsOf("a.csv", endless).size(), 1u);
}

TEST(CsvBookTest, BadBytesCostNoMoreThanTheirPlace)
{
    const auto friends = friendsOf("a.csv", std::string("1,\xFF\x81,n") + '\0' +
                                                "m,a@example.com\n1,p,n,b\x81 @example.com\n");
    ASSERT_EQ(friends.size(), 1u);
    EXPECT_EQ(friends.front().name, "n m");
}

}
}
