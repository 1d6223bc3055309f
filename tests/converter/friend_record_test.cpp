#include "converter/friend_record.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

TEST(FriendRecordTest, ANameHoldsNothingThatTheReaderStumblesOver)
{
    const Text long64(64, u'あ');
    for (const auto& [written, kept] : std::vector<std::pair<Text, Text>>{
             {u"  \u3000name\u3000 ", u"name"},
             {u"a\r\n\tb", u"a b"},
             {u"a\x1A"
              u"b\x7F",
              u"a b"},
             {Text(u"a\0b", 3), u"a b"},
             {u"O'Hara \"Ken\"", u"O’Hara ’Ken’"},
             {u"a|b,c", u"a|b,c"},
             {u"か\u3099き", u"がき"},
             {u"\U0001F431\u200Bネコ", u"〓ネコ"},
             {long64 + u"い", long64},
             {Text(63, u'x') + u" y", Text(63, u'x')},
             {Text(63, u'x') + u"\U0001F431y", Text(63, u'x') + u"〓"}})
        EXPECT_EQ(friendText(written), kept);
}

TEST(FriendRecordTest, AnAddressIsStoredAsItStandsOrNotAtAll)
{
    for (const auto& [written, kept] : std::vector<std::pair<Text, Text>>{
             {u"a@example.com", u"a@example.com"},
             {u" \ta@example.com\r\n\u3000", u"a@example.com"},
             {u"MailTo:a@example.com", u"a@example.com"},
             {u"ayumi..a.@keitai.example.jp", u"ayumi..a.@keitai.example.jp"},
             {u"\uFEFFa@example.com", u"a@example.com"},
             {u"花@example.jp", u"花@example.jp"}})
        EXPECT_EQ(friendAddress(written), kept);
    for (const TextView bad :
         {u"", u"nobody", u"@example.com", u"a@", u"a b@example.com", u"a\u00A0b@example.com",
          u"o'hara@example.com", u"o’hara@example.com", u"\"a\"@example.com", u"<a@example.com>",
          u"a@example.com,b@example.com", u"a\u3000@example.com", u"a\tb@example.com",
          u"\U0001F431@example.com", u"\uFFFD@example.com", u"・@example.com", u"é@example.com"})
        EXPECT_EQ(friendAddress(bad), u"") << std::string(bad.begin(), bad.end());
    EXPECT_EQ(friendAddress(Text(52, u'x') + u"@example.com").size(), 64u);
    EXPECT_EQ(friendAddress(Text(53, u'x') + u"@example.com"), u"");
}

TEST(FriendRecordTest, ARecordHasItsFiveFields)
{
    const auto record = friendRecord({u"4", u"pet", u"", u" a@example.com", 32767});
    ASSERT_TRUE(record);
    EXPECT_EQ(record->address, u"a@example.com");
    EXPECT_EQ(record->line, "\"4\",\"pet\",\"\",\"a@example.com\",32767\r\n");
    EXPECT_EQ(friendRecord({{}, {}, {}, u"a@b.example", 32768})->line,
              "\"0\",\"\",\"\",\"a@b.example\",0\r\n");
    EXPECT_FALSE(friendRecord({u"1", u"pet", u"name", u"", 1}));
}

}
}
