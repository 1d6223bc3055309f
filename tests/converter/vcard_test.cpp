#include "converter/vcard.h"

#include "converter/friend_reader.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

const std::vector<ExpectedFriends>& table()
{
    static const std::vector<ExpectedFriends> rows{
        {"v21_sjis.vcf", {carded("能登ソノ", "sono@example.jp")}},
        {"v21_quoted.vcf", {carded("山口さくら", "sakura@example.org")}},
        {"v21_folds.vcf", {carded("Emily Brown", "emily@example.org")}},
        {"v21_agent.vcf", {carded("Ken", "ken@example.org")}},
        {"v30_utf8.vcf", {carded("表 なおみ", "naomi@example.org")}},
        {"v30_fold_in_character.vcf", {carded("おばあちゃん", "baachan@example.jp")}},
        {"v30_base64.vcf", {carded("まゆ", "mayu@example.com")}},
        {"v30_escapes.vcf", {carded("Tom, Anne; ’Pip’ and \\o\\x", "tom.anne@example.org")}},
        {"v30_name_parts.vcf",
         {carded("高橋 千尋", "chihiro@example.jp"), carded("りえ", "rie@example.jp")}},
        {"v40_preferred.vcf", {carded("ちえ", "chie@work.example.com")}},
        {"utf8_mark.vcf", {carded("みなみ①号", "minami@example.jp")}},
        {"utf16_little.vcf", {carded("髙木ゆう", "yuu@example.com")}},
        {"utf16_big.vcf", {carded("髙木ゆう", "yuu@example.com")}},
        {"jis_undeclared.vcf", {carded("久保;優", "yu@example.jp")}},
        {"euc_undeclared.vcf", {carded("久保", "kubo@example.jp")}},
        {"sjis_undeclared.vcf", {carded("表ソ能", "so@example.jp")}},
        {"several.VCF", {carded("one", "one@example.com"), carded("two", "two@example.com")}},
        {"broken_cut_off.vcf", {carded("whole", "whole@example.com")}},
        {"broken_agent.vcf", {carded("next", "next@example.com")}},
        {"broken_no_cards.vcf", {}},
    };
    return rows;
}

class VcardCorpusTest : public testing::TestWithParam<ExpectedFriends> {};

TEST_P(VcardCorpusTest, BecomesTheseFriends)
{
    EXPECT_EQ(friendsOfFile(GetParam().file), GetParam().friends);
}

INSTANTIATE_TEST_SUITE_P(Vcard, VcardCorpusTest, testing::ValuesIn(table()));

std::string card(const std::string& lines)
{
    return "BEGIN:VCARD\r\nVERSION:3.0\r\n" + lines + "\r\nEND:VCARD\r\n";
}

ReadFriends friendsOfCard(const std::string& lines)
{
    return friendsOf("a.vcf", card(lines));
}

TEST(VcardTest, TheNameIsTheFirstOfItsKindOfWhichSomethingIsLeft)
{
    const std::string mail = "\r\nEMAIL:a@example.com";
    for (const auto& [lines, name] : std::vector<std::pair<std::string, std::string>>{
             {"N:Brown;Emily\r\nFN:Em", "Em"},
             {"FN: \r\nN:Brown;Emily;Jane;Dr.;Jr.\r\nNICKNAME:E", "Brown Emily Jane"},
             {"N:;Emily", "Emily"},
             {"N:Brown;Ann,Emily", "Brown Ann Emily"},
             {"NICKNAME:Em,Emmy", "Em"},
             {"NOTE:nothing", ""},
             {"FN:second;PREF", "second;PREF"},
             {"FN;PREF=9:ninth\r\nFN;PREF=1:first", "first"}})
        EXPECT_EQ(friendsOfCard(lines + mail), ReadFriends{carded(name, "a@example.com")}) << lines;
}

TEST(VcardTest, TheAddressIsThePreferredOneThatCanBeStored)
{
    for (const auto& [lines, address] : std::vector<std::pair<std::string, std::string>>{
             {"EMAIL:a@x.example\r\nEMAIL:b@x.example", "a@x.example"},
             {"EMAIL:a@x.example\r\nEMAIL;PREF:b@x.example", "b@x.example"},
             {"EMAIL:a@x.example\r\nEMAIL;TYPE=\"home,PREF\":b@x.example", "b@x.example"},
             {"EMAIL;PREF=3:a@x.example\r\nEMAIL;PREF=2:b@x.example", "b@x.example"},
             {"EMAIL;PREF=0:a@x.example\r\nEMAIL;PREF=100:b@x.example", "b@x.example"},
             {"EMAIL:\r\nEMAIL:b@x.example", "b@x.example"},
             {"EMAIL;PREF=1:o'hara@x.example\r\nEMAIL:b@x.example", "b@x.example"},
             {"home.EMAIL; X=\"a;b:c\" ; TYPE=home : b@x.example ", "b@x.example"}})
        EXPECT_EQ(friendsOfCard("FN:n\r\n" + lines), ReadFriends{carded("n", address)}) << lines;
}

TEST(VcardTest, ACardWithoutAnAddressIsNoFriend)
{
    for (const char* lines :
         {"FN:n", "FN:n\r\nEMAIL:", "FN:n\r\nEMAIL:/C=JP/O=X", "FN:n\r\nXEMAIL:a@example.com",
          "FN:n\r\nEMAIL a@example.com", "FN:n\r\nEMAIL;X=\"open:a@example.com"})
        EXPECT_EQ(friendsOfCard(lines), ReadFriends{}) << lines;
}

TEST(VcardTest, ASoftBreakAtTheEndOfACardDoesNotReachIntoTheNext)
{
    const std::string cards =
        card("EMAIL:a@example.com\r\nFN;QUOTED-PRINTABLE:A=") + card("FN:B\r\nEMAIL:b@example.com");
    EXPECT_EQ(friendsOf("a.vcf", cards),
              (ReadFriends{carded("A", "a@example.com"), carded("B", "b@example.com")}));
}

TEST(VcardTest, AnAgentWithinAnAgentIsPassedOverToItsEnd)
{
    const std::string begin = "AGENT:\r\n\r\nBEGIN:VCARD\r\nEMAIL:agent@example.com\r\n";
    EXPECT_EQ(
        friendsOfCard("FN:n\r\nx.agent;VALUE=vcard:\r\n" + begin.substr(8) + begin +
                      "END:VCARD\r\nEMAIL:too@example.com\r\nEND:VCARD\r\nEMAIL:a@example.com"),
        ReadFriends{carded("n", "a@example.com")});
    EXPECT_EQ(friendsOfCard("AGENT:BEGIN:VCARD\\nEMAIL:agent@example.com\\nEND:VCARD\r\n"
                            "EMAIL:a@example.com"),
              ReadFriends{carded("", "a@example.com")});
}

TEST(VcardTest, AGuessIsMadeFromTheWholeCard)
{
    // "久保" alone could be half-width kana of code page 932.
    const std::string name = "FN:\xB5\xD7\xCA\xDD\r\n";
    EXPECT_EQ(friendsOfCard(name + "NICKNAME:\xA4\xAF\xA4\xDC\r\nEMAIL:a@example.com"),
              ReadFriends{carded("久保", "a@example.com")});
}

TEST(VcardTest, BadBytesCostNoMoreThanTheirPlace)
{
    const std::string name = "FN;CHARSET=UTF-8:\xE3\x81\x82\xE3\x81\x84\xE3\x81\x86\xFF";
    EXPECT_EQ(friendsOfCard(name + '\0' + "b\r\nEMAIL:a@example.com"),
              ReadFriends{carded("あいう〓 b", "a@example.com")});
    EXPECT_EQ(friendsOfCard("EMAIL;CHARSET=UTF-8:\xE3\x81\x82\xE3\x81\x84\xFF@example.com"),
              ReadFriends{});
}

TEST(VcardTest, LongPropertiesAndManyOfThemAreBearable)
{
    const std::string kilo(1000, 'x');
    std::string picture = "PHOTO;ENCODING=b:";
    for (int line = 0; line < 3000; ++line)
        picture += kilo + "\r\n ";
    std::string values;
    for (int line = 0; line < 5000; ++line)
        values += "EMAIL:nothing\r\n";
    EXPECT_EQ(friendsOfCard(picture + "\r\nEMAIL:a@example.com\r\n" + values),
              ReadFriends{carded("", "a@example.com")});
    EXPECT_EQ(friendsOfCard("FN:" + kilo + "\r\nEMAIL:a@example.com"),
              ReadFriends{carded(std::string(64, 'x'), "a@example.com")});
}

}
}
