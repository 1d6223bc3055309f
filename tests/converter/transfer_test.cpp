#include "converter/transfer.h"

#include "converter/content_type.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

TEST(TransferTest, Base64TakesWhatThereIs)
{
    EXPECT_EQ(decodeBase64("YWJj"), "abc");
    EXPECT_EQ(decodeBase64("YW\r\nI"), "ab");
    EXPECT_EQ(decodeBase64("YQ==YmM="), "abc");
    EXPECT_EQ(decodeBase64("Y-W!Jj"), "abc");
    EXPECT_EQ(decodeBase64("Y"), "");
    EXPECT_EQ(decodeBase64(""), "");
}

TEST(TransferTest, TextUnderTheLabelBase64IsDecodedAsFarAsItIsThat)
{
    const auto decoded = [](std::string_view text) { return decodeBase64Text(text, false); };
    EXPECT_EQ(decoded("SGVsbG8gdGhlcmUh\n"), "Hello there!");
    EXPECT_EQ(decoded("Hello, this is plain.\nBye\n"), "Hello, this is plain.\nBye\n");
    EXPECT_EQ(decoded("Dear\nfriend, how are you?\n"), "Dear\nfriend, how are you?\n");
    EXPECT_EQ(decoded("SGVsbG8gdGhlcmUh\n\n____\nList footer\n"),
              "Hello there!\n____\nList footer\n");
    EXPECT_EQ(decoded("SGVsbG8gdGhlcmUh\nThanks\n"), "Hello there!\nThanks\n");
    EXPECT_EQ(decoded("YQ==\nYmM=\n"), "abc");
    EXPECT_EQ(decoded("SGVsbG8\n"), "Hello");
    EXPECT_EQ(decodeBase64Text("AGEAYgBj\n", true), std::string("\0a\0b\0c", 6));
    EXPECT_EQ(decoded(""), "");
}

TEST(TransferTest, QuotedPrintableKeepsWhatIsNoCode)
{
    EXPECT_EQ(decodeQuotedPrintable("a=3Db=\nc =ZZ =  \nd  \n"), "a=bc =ZZ d\n");
    EXPECT_EQ(decodeQuotedPrintable("=4"), "=4\n");
    EXPECT_EQ(decodeQWord("a_b=5F"), "a b_");
}

TEST(TransferTest, UnknownEncodingLeavesTheBytes)
{
    EXPECT_EQ(decodeTransfer("YWJj", "BASE64"), "abc");
    EXPECT_EQ(decodeTransfer("YWJj", "7bit"), "YWJj");
    EXPECT_EQ(decodeTransfer("YWJj", ""), "YWJj");
}

TEST(TransferContentTypeTest, GivesTypeAndParameters)
{
    const ContentType content = parseContentType(
        "Text/Plain; Charset=\"iso-2022-jp\"; format=flowed;boundary=\"a;b\"; name*=utf-8''x");
    EXPECT_EQ(content.type, "text/plain");
    EXPECT_EQ(content.parameter("charset"), "iso-2022-jp");
    EXPECT_EQ(content.parameter("boundary"), "a;b");
    EXPECT_EQ(content.parameter("name"), "x");
    EXPECT_EQ(content.parameter("missing"), "");
    EXPECT_EQ(parseContentType("").type, "");
    EXPECT_EQ(parseContentType(";;=; x*=").type, "");
}

}
}
