// Names, sizes and files inside a text.
#include "converter/further_part.h"
#include "converter/text_part.h"
#include "converter/uuencode.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

std::string nameOf(const std::string& head)
{
    const HeaderFields fields(head);
    return toUtf8(partName(fields, parseContentType(fields.value("content-type"))));
}

TEST(PartsTest, AFurtherPartIsNamedInAnyOfTheFormsMet)
{
    EXPECT_EQ(nameOf("Content-Type: a/b; name=\"C:\\\\pics\\\\a b.gif\"\n"), "a b.gif");
    EXPECT_EQ(nameOf("Content-Type: a/b; name=\"C:\\pics\\a.gif\"\n"), "a.gif");
    EXPECT_EQ(nameOf("Content-Disposition: inline; filename*=utf-8''%E6%A1%9C\n"), "桜");
    EXPECT_EQ(nameOf("Content-Disposition: inline; filename*=%zz\n"), "%zz");
    EXPECT_EQ(nameOf("Content-Type: a/b; name*1=b; name*0=a\n"), "ab");
    EXPECT_EQ(nameOf("Content-Type: a/b\n"), "");
}

TEST(PartsTest, AFurtherPartSaysItsDecodedSize)
{
    EXPECT_EQ(decodedSize("YWJj\nYQ==\n", "base64"), 4u);
    EXPECT_EQ(decodedSize("a=3Db\n", "quoted-printable"), 4u);
    EXPECT_EQ(decodedSize("abc\n", "7bit"), 3u);
    EXPECT_EQ(toUtf8(furtherPartLine(u"", "a/b", 1234567)),
              "（添付: 名前なし、a/b、1,234,567 バイト）");
}

TEST(PartsTest, UuencodedFilesAreTakenOutAndOtherTextStays)
{
    std::vector<UuencodedFile> files;
    EXPECT_EQ(withoutUuencoded("a\nbegin 644 x y\n#86)C\n`\nend\nb\n", files), "a\nb\n");
    ASSERT_EQ(files.size(), 1u);
    EXPECT_EQ(files[0].name, "x y");
    EXPECT_EQ(files[0].size, 3u);
    for (const char* text : {"begin 644 x\nto read.\n", "begin 644\n#86)C\n", "begin at once\n"})
        EXPECT_EQ(withoutUuencoded(text, files), text);
    EXPECT_EQ(files.size(), 1u);
    EXPECT_EQ(uuencodedIn("begin 644 x\n#86)C\n`\nend\n").bytes, "abc");
}

TEST(PartsTest, FlowedTextIsRejoined)
{
    EXPECT_EQ(unflowed(u"a \nb\r\n c\n", false), u"a b\nc\n");
    EXPECT_EQ(unflowed(u"a \nb\n", true), u"ab\n");
    EXPECT_EQ(unflowed(u"> a \n> b\n>c\n", false), u"> a b\n> c\n");
    EXPECT_EQ(unflowed(u"a \n-- \nb\n", false), u"a \n-- \nb\n");
    EXPECT_EQ(unflowed(u"a \n> b", false), u"a \n> b\n");
    EXPECT_EQ(unflowed(u"", false), u"");
}

}
}
