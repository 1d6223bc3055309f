#include "converter/charset.h"

#include "converter/charset_guess.h"
#include "converter/iso2022jp.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

TEST(CharsetGuess, TellsByEscapesThenUtf8ThenScore)
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

TEST(Charset, KnowsTheLabelsMet)
{
    for (const char* label :
         {"shift_jis", "Shift_JIS", "x-sjis", "windows-31j", "CP932", "\"sjis\"", "shift_jis*ja"})
        EXPECT_EQ(decodeCharset("\x82\xA0\x87\x40", label), u"あ①") << label;
    for (const char* label : {"euc-jp", "X-EUC-JP", "eucjp"})
        EXPECT_EQ(decodeCharset("\xA4\xA2\xAD\xA1\x8E\xB1", label), u"あ①ｱ") << label;
    EXPECT_EQ(decodeCharset("\xB0\xA1\xB0\xA2", "gb2312"), u"啊阿");
    EXPECT_EQ(decodeCharset("caf\xE9", "iso-8859-1"), u"café");
}

TEST(Charset, DoesNotBelieveALabelThatTheBytesContradict)
{
    EXPECT_EQ(decodeCharset("\x82\xA0\x82\xA2", "utf-8"), u"あい");
    EXPECT_EQ(decodeCharset("\xE3\x81\x82", "us-ascii"), u"あ");
    EXPECT_EQ(decodeCharset("\x1b$B$\"\x1b(B", "utf-8"), u"あ");
    EXPECT_EQ(decodeCharset("\x1b$B$\"\x1b(B", "iso-8859-1"), u"あ");
    EXPECT_EQ(decodeCharset("\x82\xA0\x82\xA2", "iso-2022-jp"), u"あい");
}

TEST(Charset, TextCutInsideACharacterIsStillUtf8)
{
    EXPECT_EQ(decodeCharset("\xE3\x81\x82\xE3\x81\x84\xE3\x81\x86\xE3\x81", "utf-8").substr(0, 4),
              u"あいう\xFFFD");
    EXPECT_EQ(decodeGuessed("\xE3\x81\x82\xE3\x81\x84\xE3\x81\x86\xE3").substr(0, 4),
              u"あいう\xFFFD");
}

TEST(Charset, Jis0212OfEucGoesThroughItsOwnTable)
{
    EXPECT_EQ(decodeCharset("\x8F\xB0\xA1\xA4\xA2", "euc-jp"), u"丂あ");
}

TEST(Iso2022Jp, PutsStrippedEscapesBackOnlyWhereTheyAreMeant)
{
    EXPECT_EQ(restoreEscapes("a $B$\"$$(B b"), "a \x1b$B$\"$$\x1b(B b");
    for (const char* plain : {"$B", "$B(B", "cost $Bx(B", "$Babc", "US$Bond (B)", "$B$\" (B"})
        EXPECT_EQ(restoreEscapes(plain), plain);
}

TEST(Iso2022Jp, RowsAndCellsMapOntoCodePage932)
{
    EXPECT_EQ(ansiOfJis(0x21, 0x21), "\x81\x40");
    EXPECT_EQ(ansiOfJis(0x21, 0x60), "\x81\x80");
    EXPECT_EQ(ansiOfJis(0x24, 0x22), "\x82\xA0");
    EXPECT_EQ(ansiOfJis(0x5F, 0x21), "\xE0\x40");
    EXPECT_EQ(ansiOfJis(0x7E, 0x7E), "\xEF\xFC");
}

}
}
