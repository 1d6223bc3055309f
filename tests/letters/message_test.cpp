#include "letters/message.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

Letter letter()
{
    Letter made;
    made.date = u"20010401";
    made.time = u"101112";
    made.senderName = u"Taro";
    made.senderAddress = u"taro@example.com";
    made.receiverName = kNoLetterValue;
    made.receiverAddress = u"hana@example.jp";
    made.subject = u"hello";
    made.text = u"a line\r\nanother\r\n";
    made.identity = 0x1234;
    return made;
}

std::string fieldOf(const std::string& message, const std::string& name)
{
    const std::size_t begin = message.find("\n" + name + ": ");
    if (begin == std::string::npos) return "none";
    const std::size_t value = begin + name.size() + 3;
    std::size_t end = message.find('\n', value);
    while (message[end + 1] == ' ')
        end = message.find('\n', end + 1);
    return message.substr(value, end - value);
}

std::string bodyOf(const std::string& message)
{
    return message.substr(message.find("\n\n") + 2);
}

TEST(MessageTest, OfAPlainLetterIsReadableAsItIs)
{
    EXPECT_EQ(asMessage(letter()), "From: \"Taro\" <taro@example.com>\n"
                                   "To: <hana@example.jp>\n"
                                   "Subject: hello\n"
                                   "Date: Sun, 01 Apr 2001 10:11:12 +0900\n"
                                   "Message-ID: <0000000000001234@letters.tolvek.invalid>\n"
                                   "X-Tolvek-Direction: received\n"
                                   "MIME-Version: 1.0\n"
                                   "Content-Type: text/plain; charset=UTF-8\n"
                                   "Content-Transfer-Encoding: 8bit\n"
                                   "\n"
                                   "a line\n"
                                   "another\n");
}

TEST(MessageTest, JapaneseHeadingsAreEncodedInLinesOfAllowedLength)
{
    Letter japanese = letter();
    const Text subject(100, u'旅');
    japanese.subject = subject;
    japanese.senderName = u"たろう";
    const std::string message = "\n" + asMessage(japanese);
    EXPECT_EQ(fieldOf(message, "From"), "=?UTF-8?B?44Gf44KN44GG?= <taro@example.com>");
    for (std::size_t begin = 0; begin < message.find("\n\n");) {
        const std::size_t end = message.find('\n', begin + 1);
        EXPECT_LE(end - begin - 1, 90u);
        begin = end;
    }
}

TEST(MessageTest, WhatTheLetterNeverHadIsLeftOut)
{
    Letter bare = letter();
    bare.senderName = bare.senderAddress = kNoLetterValue;
    bare.subject = u"";
    const std::string message = "\n" + asMessage(bare);
    EXPECT_EQ(fieldOf(message, "From"), "none");
    EXPECT_EQ(fieldOf(message, "Subject"), "none");
}

TEST(MessageTest, AnEmptyLineStandsForThree)
{
    Letter spaced = letter();
    spaced.text = u"a\r\n\r\nb\r\n";
    EXPECT_EQ(bodyOf(asMessage(spaced)), "a\n\n\n\nb\n");
}

TEST(MessageTest, ATextThatCouldBeMistakenIsInBase64)
{
    for (const TextView text : {u"From here\r\n", u">From there\r\n", u".\r\n", u"Subject: x\r\n",
                                u"begin 644 a\r\n", u"\x1B(B\r\n"}) {
        Letter odd = letter();
        odd.text = text;
        EXPECT_NE(asMessage(odd).find("Encoding: base64"), std::string::npos) << toUtf8(text);
    }
    Letter address = letter();
    address.text = u"旅行 http://example.com/\r\n> quoted\r\n";
    EXPECT_NE(asMessage(address).find("Encoding: 8bit"), std::string::npos);
}

TEST(MessageTest, AnMboxEntryHasASeparatorAndAnEmptyLineAfterIt)
{
    const std::string entry = asMboxEntry(letter());
    EXPECT_TRUE(entry.starts_with("From taro@example.com Sun Apr  1 10:11:12 2001\nFrom: "));
    EXPECT_TRUE(entry.ends_with("another\n\n"));
    Letter unknown = letter();
    unknown.senderAddress = kNoLetterValue;
    EXPECT_TRUE(asMboxEntry(unknown).starts_with("From - Sun Apr"));
}

TEST(MessageTest, AnOddDateIsTheNearestOneAndKeptAsStored)
{
    for (const auto& [date, time, field] :
         {std::tuple{u"20010015", u"101112", "Mon, 15 Jan 2001 10:11:12 +0900"},
          {u"20010401", u"90500", "Sun, 01 Apr 2001 09:05:00 +0900"},
          {u"20010231", u"250000", "Wed, 28 Feb 2001 23:00:00 +0900"},
          {u"", u"", "Mon, 01 Jan 0001 00:00:00 +0900"}}) {
        Letter odd = letter();
        odd.date = date;
        odd.time = time;
        const std::string message = asMessage(odd);
        EXPECT_EQ(fieldOf(message, "Date"), field);
        EXPECT_EQ(fieldOf(message, "X-Tolvek-Date"), toUtf8(odd.date) + " " + toUtf8(odd.time));
    }
    EXPECT_EQ(fieldOf(asMessage(letter()), "X-Tolvek-Date"), "none");
}

}
}
