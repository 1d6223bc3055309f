#include "platform/runtime/text_files.h"
#include "platform/system/test_hooks.h"

#include "file_folder.h"
#include "support/errors.h"

namespace tolvek::test {

namespace fs = std::filesystem;
using Texts = std::vector<Text>;

class TextFilesTest : public FileFolderTest {
protected:
    ~TextFilesTest() override
    {
        hooks::setFileProbe({});
        closeAllFiles();
    }
    void openWith(const std::string& bytes)
    {
        closeFile(1);
        given("in", bytes);
        openForInput(text(u"in"), 1);
    }
    Texts lines(const std::string& bytes)
    {
        openWith(bytes);
        Texts all;
        while (!endOfFile(1))
            all.push_back(lineInput(1));
        return all;
    }
    Texts items(const std::string& bytes)
    {
        openWith(bytes);
        Texts all;
        while (!endOfFile(1))
            all.push_back(inputText(1));
        return all;
    }
};

TEST_F(TextFilesTest, ALineEndsAtCrOrCrLfAndNotAtALoneLf)
{
    EXPECT_EQ(lines("a\r\nb\rc\nd\r\n"), (Texts{u"a", u"b", u"c\nd"}));
    EXPECT_EQ(lines("\r\n\r\r\n"), (Texts{u"", u"", u""}));
    EXPECT_EQ(lines("last without end"), Texts{u"last without end"});
    EXPECT_EQ(lines("a\r"), Texts{u"a"});
    EXPECT_EQ(lines(""), Texts{});
}

TEST_F(TextFilesTest, LinesAreCodePage932)
{
    EXPECT_EQ(lines("\x83\x79\x83\x62\x83\x67\r\n\xcd\xdf\r\n\\~\t\r\n"),
              (Texts{u"ペット", u"ﾍﾟ", u"\\~\t"}));
}

TEST_F(TextFilesTest, AByte1AEndsTheFile)
{
    EXPECT_EQ(lines("a\r\nb\x1a\r\nc"), (Texts{u"a", u"b"}));
    EXPECT_EQ(lines("\x1a" + std::string("a")), Texts{});
    EXPECT_EQ(errorOf([] { lineInput(1); }), 62);
}

TEST_F(TextFilesTest, LinesAcrossTheBuffersEndAreWhole)
{
    // Every position of the line end and of a double byte around the end of a
    // buffer.
    for (std::size_t size = (1 << 17) - 4; size <= (1 << 17) + 2; ++size) {
        const Texts read = lines(std::string(size, 'x') + "\r\n\x83\x79\r\n" +
                                 std::string(300'000, 'y') + "\r\nz");
        ASSERT_EQ(read.size(), 4U) << size;
        EXPECT_EQ(read[0], Text(size, u'x'));
        EXPECT_EQ(read[1], u"ペ");
        EXPECT_EQ(read[2], Text(300'000, u'y'));
        EXPECT_EQ(read[3], u"z");
    }
}

TEST_F(TextFilesTest, ReadingPastTheEndIsError62)
{
    openWith("a\r\n");
    EXPECT_EQ(lineInput(1), u"a");
    EXPECT_TRUE(endOfFile(1));
    EXPECT_EQ(errorOf([] { lineInput(1); }), 62);
    EXPECT_EQ(errorOf([] { inputText(1); }), 62);
    EXPECT_EQ(errorOf([] { inputInt16(1); }), 62);
}

struct Items {
    const char* bytes;
    Texts items;
};

TEST_F(TextFilesTest, ItemsOfTexts)
{
    const Items table[] = {
        {"a,b\r\nc\rd", {u"a", u"b", u"c", u"d"}},
        {"\"a,b\r\nc\",d\r\n", {u"a,b\r\nc", u"d"}},
        {" \t\x81\x40 a  \x81\x40,b", {u"a", u"b"}},
        {"a\r\n\r\nb,,c", {u"a", u"", u"b", u"", u"c"}},
        {"\"\",\"x\"", {u"", u"x"}},
        {"\"a\"\"b\"", {u"a", u"b"}}, // not an escape: the second quote begins an item
        {"\"a\"rest,b", {u"a", u"rest", u"b"}},
        {"a\"b\",c", {u"a\"b\"", u"c"}},
        {"\"no end,\r\n", {u"no end,\r\n"}},
        {"  \" a \" \r\n", {u" a ", u""}},
        {"a\nb,c", {u"a\nb", u"c"}},
        {"\x83\x5c,\x95\x5c", {u"ソ", u"表"}},
    };
    for (const auto& [bytes, expected] : table)
        EXPECT_EQ(items(bytes), expected) << bytes;
}

TEST_F(TextFilesTest, OnlyBlanksLeftIsError62)
{
    openWith("a,  \t\x81\x40");
    EXPECT_EQ(inputText(1), u"a");
    EXPECT_FALSE(endOfFile(1));
    EXPECT_EQ(errorOf([] { inputText(1); }), 62);
    openWith("  ");
    EXPECT_EQ(errorOf([] { inputInt16(1); }), 62);
}

TEST_F(TextFilesTest, ItemsOfNumbers)
{
    openWith(" \t\x81\x40 12,-3 45\t6\r\n7 , 8,,x,1.5,\r\n9");
    for (int expected : {12, -3, 45, 6, 7, 8, 0, 0, 2, 0, 9})
        EXPECT_EQ(int(inputInt16(1)), expected);
    EXPECT_TRUE(endOfFile(1));
}

TEST_F(TextFilesTest, ANumberOutOfRangeIsError6)
{
    openWith("1e370,-1e370,32768,32768,2147483648,5");
    EXPECT_EQ(errorOf([] { inputInt16(1); }), 6);
    EXPECT_EQ(errorOf([] { inputInt32(1); }), 6);
    EXPECT_EQ(errorOf([] { inputInt16(1); }), 6);
    EXPECT_EQ(inputInt32(1), 32768);
    EXPECT_EQ(errorOf([] { inputInt32(1); }), 6);
    EXPECT_EQ(int(inputInt16(1)), 5);
}

TEST_F(TextFilesTest, WhatIsWrittenComesBack)
{
    openForOutput(text(u"out"), 1);
    writeItems(1, {TextView(u"ペット"), -1, TextView(u""), 20000215});
    writeItems(1, {TextView(u"say \"x\"")});
    closeFile(1);
    EXPECT_EQ(contents("out"),
              "\"\x83\x79\x83\x62\x83\x67\",-1,\"\",20000215\r\n\"say \"x\"\"\r\n");
    openForInput(text(u"out"), 1);
    EXPECT_EQ(inputText(1), u"ペット");
    EXPECT_EQ(int(inputInt16(1)), -1);
    EXPECT_EQ(inputText(1), u"");
    EXPECT_EQ(inputInt32(1), 20000215);
}

TEST_F(TextFilesTest, OpenForOutputEmptiesTheFileThatIsMeant)
{
    given("TblTolvek.Txt", "old");
    openForOutput(text(u"tbltolvek.txt"), 1);
    closeFile(1);
    EXPECT_EQ(contents("TblTolvek.Txt"), "");
    EXPECT_EQ(everything().size(), 1U);
}

TEST_F(TextFilesTest, AFlushBringsTheBufferToTheFileAndLeavesItOpen)
{
    openForOutput(text(u"out"), 1);
    writeItems(1, {TextView(u"a")});
    EXPECT_EQ(contents("out"), "");
    flushFile(1);
    EXPECT_EQ(contents("out"), "\"a\"\r\n");
    writeItems(1, {TextView(u"b")});
    closeFile(1);
    EXPECT_EQ(contents("out"), "\"a\"\r\n\"b\"\r\n");
}

TEST_F(TextFilesTest, NumbersAreTheLowestFreeOnes)
{
    given("in");
    EXPECT_EQ(int(freeFile()), 1);
    openForInput(text(u"in"), 1);
    openForInput(text(u"in"), 2);
    EXPECT_EQ(int(freeFile()), 3);
    closeFile(1);
    EXPECT_EQ(int(freeFile()), 1);
    closeAllFiles();
    EXPECT_EQ(errorOf([] { lineInput(2); }), 52);
}

TEST_F(TextFilesTest, NoNumberLeftIsError67)
{
    given("in");
    for (int number = 1; number <= 255; ++number)
        openForInput(text(u"in"), freeFile());
    EXPECT_EQ(errorOf([] { freeFile(); }), 67);
}

TEST_F(TextFilesTest, NumbersThatCantBeUsed)
{
    openWith("a");
    EXPECT_EQ(errorOf([&] { openForInput(text(u"in"), 1); }), 55);
    EXPECT_EQ(errorOf([&] { openForOutput(text(u"in"), 1); }), 55);
    EXPECT_EQ(contents("in"), "a");
    EXPECT_EQ(errorOf([&] { writeItems(1, {TextView(u"x")}); }), 54);
    for (int number : {-1, 0, 2, 256}) {
        EXPECT_EQ(errorOf([&] { lineInput(number); }), 52) << number;
        EXPECT_EQ(errorOf([&] { writeItems(number, {TextView(u"x")}); }), 52) << number;
        EXPECT_EQ(errorOf([&] { closeFile(number); }), 0) << number;
    }
    EXPECT_EQ(errorOf([&] { openForInput(text(u"in"), 256); }), 52);
}

TEST_F(TextFilesTest, OpeningThatFails)
{
    given("sub/a", "a");
    protect("sub/a");
    EXPECT_EQ(errorOf([&] { openForInput(text(u"none"), 1); }), 53);
    EXPECT_EQ(errorOf([&] { openForInput(text(u"none/a"), 1); }), 76);
    EXPECT_EQ(errorOf([&] { openForInput(text(u"sub"), 1); }), 75);
    EXPECT_EQ(errorOf([&] { openForInput(u"", 1); }), 75);
    EXPECT_EQ(errorOf([&] { openForOutput(text(u"none/a"), 1); }), 76);
    EXPECT_EQ(errorOf([&] { openForOutput(text(u"sub"), 1); }), 75);
    EXPECT_EQ(errorOf([&] { openForOutput(text(u"sub/a"), 1); }), 75);
    EXPECT_EQ(contents("sub/a"), "a");
    breakOperation(FileOperation::Open, std::errc::device_or_resource_busy);
    EXPECT_EQ(errorOf([&] { openForInput(text(u"sub/a"), 1); }), 70);
    EXPECT_EQ(int(freeFile()), 1);
}

TEST_F(TextFilesTest, AFailedReadIsReportedOnceAndEndsTheFile)
{
    openWith("a\r\nb\r\n");
    breakOperation(FileOperation::Read, std::errc::io_error);
    EXPECT_EQ(errorOf([] { endOfFile(1); }), 57);
    EXPECT_TRUE(endOfFile(1));
    EXPECT_EQ(errorOf([] { lineInput(1); }), 62);
    hooks::setFileProbe({});
    EXPECT_TRUE(endOfFile(1)) << "what could be read now would have a gap before it";
}

// The line that the failed read was to complete doesn't count as a line.
TEST_F(TextFilesTest, NothingOfALineThatCantBeReadOnIsHandedOut)
{
    openWith("a\r\n" + std::string(200'000, 'b') + "\r\n");
    EXPECT_EQ(lineInput(1), u"a");
    breakOperation(FileOperation::Read, std::errc::io_error);
    EXPECT_EQ(errorOf([] { lineInput(1); }), 57);
    EXPECT_TRUE(endOfFile(1));
    EXPECT_EQ(errorOf([] { inputText(1); }), 62);
}

TEST_F(TextFilesTest, AFullDiskIsError61AtTheWriteOrTheCloseAndTheNumberIsFree)
{
    openForOutput(text(u"out"), 1);
    breakOperation(FileOperation::Write, std::errc::no_space_on_device);
    EXPECT_EQ(errorOf([] { writeItems(1, {TextView(Text(200'000, u'x'))}); }), 61);
    writeItems(1, {TextView(u"small")});
    EXPECT_EQ(errorOf([] { flushFile(1); }), 61);
    writeItems(1, {TextView(u"small")});
    EXPECT_EQ(errorOf([] { closeFile(1); }), 61);
    EXPECT_EQ(int(freeFile()), 1);
}

TEST_F(TextFilesTest, TheSystemsOwnFullDeviceIsError61)
{
    openForOutput(u"/dev/full", 1);
    writeItems(1, {TextView(u"x")});
    EXPECT_EQ(errorOf([] { closeFile(1); }), 61);
}

TEST_F(TextFilesTest, ClosingAllGoesOnBehindAFailure)
{
    openForOutput(text(u"a"), 1);
    openForOutput(text(u"b"), 2);
    writeItems(1, {TextView(u"x")});
    writeItems(2, {TextView(u"y")});
    hooks::setFileProbe([](FileOperation operation, const fs::path& path) {
        if (operation == FileOperation::Write && path.filename() == "a")
            throw std::system_error(std::make_error_code(std::errc::no_space_on_device));
    });
    EXPECT_EQ(errorOf([] { closeAllFiles(); }), 61);
    EXPECT_EQ(contents("b"), "\"y\"\r\n");
    EXPECT_EQ(int(freeFile()), 1);
}

}
