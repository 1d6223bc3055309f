#include "letters/window/letter_texts.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

Letter letterOf(TextView date, TextView time)
{
    Letter letter;
    letter.date = date;
    letter.time = time;
    return letter;
}

TEST(LetterTexts, DatesAreWrittenInFull)
{
    const Letter letter = letterOf(u"20000215", u"101112");
    EXPECT_EQ(shortDate(letter).toStdString(), "2000/02/15 10:11");
    EXPECT_EQ(longDate(letter).toStdString(), "2000年2月15日（火） 10:11");
}

TEST(LetterTexts, UnknownPartsOfADateAreShownAsUnknown)
{
    EXPECT_EQ(shortDate(letterOf(u"20000015", u"91112")).toStdString(), "2000/--/15 09:11");
    EXPECT_EQ(longDate(letterOf(u"20000015", u"91112")).toStdString(), "2000年");
    EXPECT_EQ(longDate(letterOf(u"20000231", u"101112")).toStdString(), "2000年2月31日 10:11");
    EXPECT_EQ(shortDate(letterOf(u"", u"")).toStdString(), "----/--/-- ");
}

TEST(LetterTexts, AMissingNameOrAddressIsLeftOut)
{
    Letter letter;
    letter.senderName = kNoLetterValue;
    letter.senderAddress = u"a@b.jp";
    letter.receiverName = u"はな";
    letter.receiverAddress = kNoLetterValue;
    EXPECT_EQ(senderText(letter).toStdString(), "a@b.jp");
    EXPECT_EQ(receiverText(letter).toStdString(), "はな");
    letter.receiverAddress = u"hana@b.jp";
    EXPECT_EQ(receiverText(letter).toStdString(), "はな <hana@b.jp>");
}

TEST(LetterTexts, ASubjectIsOneLine)
{
    Letter letter;
    EXPECT_EQ(subjectText(letter).toStdString(), "（件名なし）");
    letter.subject = u"a\r\nb";
    EXPECT_EQ(subjectText(letter).toStdString(), "a b");
}

TEST(LetterTexts, CountsHaveSeparators)
{
    EXPECT_EQ(countText(1234567).toStdString(), "1,234,567");
    EXPECT_EQ(monthText(200002).toStdString(), "2000年2月");
    EXPECT_EQ(yearText(0).toStdString(), "日付不明");
}

}
}
