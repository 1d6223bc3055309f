#include "letters/letter_json.h"

#include "letters_fixture.h"

namespace tolvek::test {
namespace {

class LetterJsonTest : public LettersFixture {};

TEST_F(LetterJsonTest, EscapesWhatATextMayHold)
{
    EXPECT_EQ(jsonText(u"a\"b\\c\r\n\t\x01\x7F"), R"("a\"b\\c\r\n\t\u0001\u007f")");
    EXPECT_EQ(jsonText(TextView(u"\0", 1)), R"("\u0000")");
    EXPECT_EQ(jsonText(u"旅行"), "\"旅行\"");
    EXPECT_EQ(jsonText(u""), "\"\"");
}

TEST_F(LetterJsonTest, ALetterIsOneLineWithAllItsFields)
{
    Mail made = with(u"旅行", u"一\r\n京都へ\r\n");
    made.RcvName = u"設定無し";
    store(made);
    const auto all = library();
    std::string line = jsonLetter(*all, 0, parseQuery(u"京都"));
    const std::size_t id = line.find("\"date\"");
    EXPECT_EQ(line.substr(id),
              "\"date\":\"2000-02-15\",\"time\":\"10:11:12\",\"sent\":false,"
              "\"from\":{\"name\":\"花子\",\"address\":\"hanako@example.jp\"},"
              "\"to\":{\"name\":null,\"address\":\"taro@example.jp\"},\"person\":\"花子\","
              "\"subject\":\"旅行\",\"line\":\"京都へ\",\"files\":[\"Tolvek.Mdb\"],"
              "\"text\":\"一\\r\\n京都へ\\r\\n\"}");
}

TEST_F(LetterJsonTest, AnOddDateIsAsStored)
{
    Mail made = with(u"a", u"", u"2050106");
    made.HMS = u"90500";
    store(made);
    const std::string line = jsonLetter(*library(), 0, {});
    EXPECT_NE(line.find("\"date\":\"2050106\",\"time\":\"90500\""), std::string::npos);
}

}
}
