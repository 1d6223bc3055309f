#include "converter/conversion.h"

#include "converter/mutation.h"
#include "converter/temp_reader.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

const std::string kMail = "From: a@example.com\r\nTo: b@example.com\r\nSubject: one\r\n"
                          "Date: Tue, 15 Feb 2000 10:11:12 +0900\r\n\r\nfirst line\r\nlast";
const std::string kOther = "To: c@example.com\r\nDate: Wed, 16 Feb 2000 10:11:12 +0900\r\n\r\n"
                           "other\r\n";

class CarvedMailsTest : public ::testing::Test {
protected:
    Conversion convert(const std::string& box)
    {
        writeBytes(folder / "box.ppm", box);
        return convertMailBox(folder / "box.ppm", folder / "Tolvek.Tmp");
    }
    std::vector<ReadMail> mails() { return readTemp(folder / "Tolvek.Tmp"); }
    TempFolder folder;
};

TEST_F(CarvedMailsTest, MessagesInClearAreTakenOutOfABinaryFile)
{
    const std::string junk("\x01\x7F\x02PPM\x05\n\x03", 9);
    const std::string number("\x03\x00\x00\x00", 4);
    ASSERT_EQ(convert(junk + number + kMail + number + "INBOX\n" + junk + kOther + junk).count, 2);
    EXPECT_EQ(mails()[0].from, "a@example.com");
    EXPECT_EQ(mails()[0].subject, "one");
    EXPECT_EQ(mails()[0].text(), "first line\nlast");
    EXPECT_EQ(mails()[1].to, "c@example.com");
    EXPECT_EQ(mails()[1].text(), "other");
}

TEST_F(CarvedMailsTest, AMessageRightAfterAnotherIsOneOfItsOwn)
{
    ASSERT_EQ(convert(std::string("\x01\n", 2) + kMail + "\r\n" + kOther).count, 2);
    EXPECT_EQ(mails()[0].text(), "first line\nlast");
}

TEST_F(CarvedMailsTest, WithoutAWholeHeaderBlockTheFileIsNoMailBox)
{
    const std::string binary("\x01\x02\n", 3);
    for (const char* block :
         {"From: a@example.com\n\ntext\n", "Subject: a\nDate: 1 Jan 2000 1:00\n\ntext\n",
          "From: a@example.com\nno field\nSubject: a\n", "From: a\nDate: never\n\ntext\n"}) {
        EXPECT_EQ(convert(binary + block).status, ConversionStatus::Unreadable) << block;
        EXPECT_FALSE(std::filesystem::exists(folder / "Tolvek.Tmp"));
    }
}

TEST_F(CarvedMailsTest, ATextThatQuotesAMailIsNoMailBox)
{
    EXPECT_EQ(convert("A letter about\n\n" + kMail).status, ConversionStatus::Unreadable);
}

TEST_F(CarvedMailsTest, EndlessBeginningsOfBlocksTakeNoLongerThanTheirLength)
{
    const std::string binary("\x01\n", 2);
    EXPECT_EQ(convert(binary + repeated("From: a\nSubject: a\nx\n", 1'000'000)).status,
              ConversionStatus::Unreadable);
    EXPECT_EQ(convert(binary + repeated("From: a\n", 1'000'000)).status,
              ConversionStatus::Unreadable);
}

}
}
