#include "converter/charset.h"

#include "platform/runtime/codepage932.h"

#include "converter/charset_guess.h"
#include "converter/iso2022jp.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

TEST(CharsetGuessTest, TellsByEscapesThenUtf8ThenScore)
{
    EXPECT_EQ(guessCharset("plain"), Charset::Ascii);
    EXPECT_EQ(guessCharset("\x1b$B$\"\x1b(B"), Charset::Iso2022Jp);
    EXPECT_EQ(guessCharset("a\x0e\x31\x0f"), Charset::Iso2022Jp);
    EXPECT_EQ(guessCharset("a\x1b[0m"), Charset::Ascii);
    EXPECT_EQ(guessCharset("\xE3\x81\x82"), Charset::Utf8);
    EXPECT_EQ(guessCharset("\x82\xA0\x82\xA2"), Charset::Ansi);
    EXPECT_EQ(guessCharset("\xA4\xA2\xA4\xA4"), Charset::EucJp);
    EXPECT_EQ(guessCharset("\x93\xFA\x96\x7B"), Charset::Ansi);
    EXPECT_EQ(guessCharset("\xC6\xFC\xCB\xDC\xB8\xEC\xA4\xC7\xA4\xB9"), Charset::EucJp);
    EXPECT_EQ(guessCharset("\xB1\xB2\xB3"), Charset::Ansi);
}

TEST(CharsetTest, KnowsTheLabelsMet)
{
    for (const char* label :
         {"shift_jis", "Shift_JIS", "x-sjis", "windows-31j", "CP932", "\"sjis\"", "shift_jis*ja"})
        EXPECT_EQ(decodeCharset("\x82\xA0\x87\x40", label), u"あ①") << label;
    for (const char* label : {"euc-jp", "X-EUC-JP", "eucjp"})
        EXPECT_EQ(decodeCharset("\xA4\xA2\xAD\xA1\x8E\xB1", label), u"あ①ｱ") << label;
    EXPECT_EQ(decodeCharset("\xB0\xA1\xB0\xA2", "gb2312"), u"啊阿");
    EXPECT_EQ(decodeCharset("caf\xE9", "iso-8859-1"), u"café");
}

TEST(CharsetTest, DoesNotBelieveALabelThatTheBytesContradict)
{
    EXPECT_EQ(decodeCharset("\x82\xA0\x82\xA2", "utf-8"), u"あい");
    EXPECT_EQ(decodeCharset("\xE3\x81\x82", "us-ascii"), u"あ");
    EXPECT_EQ(decodeCharset("\x1b$B$\"\x1b(B", "utf-8"), u"あ");
    EXPECT_EQ(decodeCharset("\x1b$B$\"\x1b(B", "iso-8859-1"), u"あ");
    EXPECT_EQ(decodeCharset("\x82\xA0\x82\xA2", "iso-2022-jp"), u"あい");
}

TEST(CharsetTest, TextCutInsideACharacterIsStillUtf8)
{
    EXPECT_EQ(decodeCharset("\xE3\x81\x82\xE3\x81\x84\xE3\x81\x86\xE3\x81", "utf-8").substr(0, 4),
              u"あいう\xFFFD");
    EXPECT_EQ(decodeGuessed("\xE3\x81\x82\xE3\x81\x84\xE3\x81\x86\xE3").substr(0, 4),
              u"あいう\xFFFD");
}

TEST(CharsetTest, Jis0212OfEucGoesThroughItsOwnTable)
{
    EXPECT_EQ(decodeCharset("\x8F\xB0\xA1\xA4\xA2", "euc-jp"), u"丂あ");
}

TEST(CharsetIso2022JpTest, PutsStrippedEscapesBackOnlyWhereTheyAreMeant)
{
    EXPECT_EQ(restoreEscapes("a $B$\"$$(B b"), "a \x1b$B$\"$$\x1b(B b");
    for (const char* plain : {"$B", "$B(B", "cost $Bx(B", "$Babc", "US$Bond (B)", "$B$\" (B"})
        EXPECT_EQ(restoreEscapes(plain), plain);
}

TEST(CharsetIso2022JpTest, RowsAndCellsMapOntoCodePage932)
{
    EXPECT_EQ(ansiOfJis(0x21, 0x21), "\x81\x40");
    EXPECT_EQ(ansiOfJis(0x21, 0x60), "\x81\x80");
    EXPECT_EQ(ansiOfJis(0x24, 0x22), "\x82\xA0");
    EXPECT_EQ(ansiOfJis(0x5F, 0x21), "\xE0\x40");
    EXPECT_EQ(ansiOfJis(0x7E, 0x7E), "\xEF\xFC");
}

TEST(CharsetTest, LabelGivesWayToEvidenceAndToNothingElse)
{
    const Text letter = u"こんにちは、はなさん。";
    const std::string sjis = toAnsi(letter);
    const std::string utf8 = toUtf8(letter);
    for (const char* label : {"iso-8859-1", "windows-1252", "iso-8859-15"}) {
        EXPECT_EQ(decodeCharset(sjis, label), letter) << label;
        EXPECT_EQ(decodeCharset(utf8, label), letter) << label;
    }
    EXPECT_EQ(decodeCharset(utf8, "shift_jis"), letter);
    EXPECT_EQ(decodeCharset(utf8, "euc-jp"), letter);
    EXPECT_EQ(decodeCharset("\x91\x48hnlich\x92", "windows-1252"), u"‘Hhnlich’");
    EXPECT_EQ(decodeCharset("\xC8\xBA\xA4\xB2\xC7", "shift_jis"), u"ﾈｺ､ｲﾇ");
    EXPECT_EQ(decodeCharset("\xD3\xD3\xC8\xBA", "shift_jis"), u"ﾓﾓﾈｺ");
    EXPECT_EQ(decodeCharset("K\xC3\xA4se", "iso-8859-1"), u"KÃ¤se");
    EXPECT_EQ(decodeCharset("\xCF\xF0\xE8\xE2\xE5\xF2", "windows-1251"), u"Привет");
}

TEST(CharsetTest, WesternTextWithoutALabelKeepsItsLetters)
{
    EXPECT_EQ(decodeGuessed("f\xFCr Gr\xF6\xDF"
                            "e"),
              u"für Größe");
    EXPECT_EQ(decodeGuessed("\xE9l\xE8ve"), u"élève");
    EXPECT_EQ(decodeGuessed(toAnsi(u"東京")), u"東京");
    EXPECT_EQ(decodeGuessed(toAnsi(u"山田春")), u"山田春");
    EXPECT_EQ(decodeGuessed(toAnsi(u"Re: 会議")), u"Re: 会議");
}

TEST(CharsetTest, Utf16IsReadInBothOrders)
{
    const std::string big("\x30\x6F\0x", 4);
    const std::string little("\x6F\x30x\0", 4);
    EXPECT_EQ(decodeCharset(big, "utf-16"), u"はx");
    EXPECT_EQ(decodeCharset(little, "utf-16"), u"はx");
    EXPECT_EQ(decodeCharset("\xFF\xFE" + little, "UTF-16"), u"はx");
}

}
}
