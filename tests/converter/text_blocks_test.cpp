// What the reader gets from the lines: blocks of 33 lines or over 4608 bytes, each
// through a record of 4608 bytes. Only line ends may be lost.
#include "converter/text_blocks.h"

#include "converter/plain_text.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace tolvek::test {
namespace {

// The reader's rule for blocks, including the cut by the record.
std::string readBack(const std::string& file)
{
    std::string all, block;
    int lines = 0, blanks = 0;
    const auto close = [&] {
        all += wholePrefix(block, 4608);
        block.clear();
        lines = 0;
    };
    for (std::size_t at = 0; at < file.size();) {
        const std::size_t end = file.find("\r\n", at);
        const std::string line = file.substr(at, end - at);
        at = end + 2;
        if (line.empty()) {
            if (++blanks == 3) block += "\r\n", blanks = 0;
            continue;
        }
        if (block.find_first_not_of(" \r\n") == std::string::npos) block.clear();
        block += line + "\r\n";
        blanks = 0;
        if (++lines >= 33 || block.size() > 4608) close();
    }
    close();
    return all;
}

std::string lettersOnly(std::string text)
{
    std::erase_if(text, [](char c) { return c == '\r' || c == '\n' || c == ' '; });
    return text;
}

std::string written(const std::vector<std::string>& lines)
{
    TextBlocks blocks;
    std::string out;
    for (const std::string& line : lines)
        blocks.add(out, line);
    return out;
}

TEST(TextBlocksTest, OrdinaryLinesStayAsTheyAre)
{
    EXPECT_EQ(written({"a", "", "b  ", " c"}), "a\r\n\r\nb  \r\n c\r\n");
}

TEST(TextBlocksTest, LineOfHalfABlockIsNotBroken)
{
    const std::string line(2300, 'x');
    EXPECT_EQ(written({line}), line + "\r\n");
}

TEST(TextBlocksTest, LineBeyondABlockIsBrokenAtTheBlocksLastByte)
{
    const std::string out = written({std::string(5000, 'x')});
    EXPECT_EQ(out, std::string(4607, 'x') + "\r\n" + std::string(393, 'x') + "\r\n");
}

TEST(TextBlocksTest, DoubleByteCharacterIsNeverHalved)
{
    std::string line;
    while (line.size() < 6000)
        line += "\x82\xA0";
    EXPECT_EQ(written({line}).substr(4604, 6), "\x82\xA0 \r\n\x82");
}

TEST(TextBlocksTest, LineThatWouldEndTheMailGetsABlank)
{
    EXPECT_EQ(written({"<End>", "<End> of it", "< End>"}), " <End>\r\n <End> of it\r\n< End>\r\n");
}

TEST(TextBlocksTest, RestOfABrokenLineDoesNotEndTheMailEither)
{
    const std::string out = written({std::string(4607, 'x') + "<End>y"});
    EXPECT_EQ(out.substr(4609), " <End>y\r\n");
}

TEST(TextBlocksTest, HalfACharacterAtTheEndOfEndlessInputIsLeftOut)
{
    EXPECT_EQ(written({std::string(4700, 'x') + "\x82"}).size(), 4700u + 4u + 1u);
}

TEST(TextBlocksTest, NoLetterIsLostForAnyMixtureOfLines)
{
    std::mt19937 random(20000215);
    for (int round = 0; round < 60; ++round) {
        std::vector<std::string> lines;
        std::string sent;
        for (int count = 0; count < 120; ++count) {
            const auto size = random() % 4 == 0 ? random() % 6000 : random() % 90;
            std::string line;
            while (line.size() < size)
                line += random() % 3 == 0 ? "\x83\x7C"
                                          : std::string(1, static_cast<char>('a' + random() % 26));
            if (random() % 5 == 0) line = std::string(random() % 3, ' ');
            lines.push_back(line);
            sent += line;
        }
        ASSERT_EQ(lettersOnly(readBack(written(lines))), lettersOnly(sent)) << round;
    }
}

TEST(TextBlocksTest, BlockLandsOnEverySizeNearTheLimitWithoutLoss)
{
    for (std::size_t first = 4590; first < 4620; ++first) {
        const std::vector<std::string> lines{
            std::string(first, 'a'), "", "", "", "", "", "", "bc", "\x82\xA0"};
        EXPECT_EQ(lettersOnly(readBack(written(lines))), std::string(first, 'a') + "bc\x82\xA0")
            << first;
    }
}

}
}
