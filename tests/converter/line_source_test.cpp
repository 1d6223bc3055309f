#include "converter/line_source.h"

#include "support/temp_folder.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

std::vector<std::string> linesOfBytes(const std::string& bytes)
{
    const TempFolder folder;
    writeBytes(folder / "box", bytes);
    LineSource source(folder / "box");
    std::vector<std::string> lines;
    std::string line;
    while (source.next(line))
        lines.push_back(line);
    return lines;
}

using Lines = std::vector<std::string>;

TEST(LineSourceTest, TakesEveryKindOfLineEnd)
{
    EXPECT_EQ(linesOfBytes(""), Lines{});
    EXPECT_EQ(linesOfBytes("a"), Lines{"a"});
    EXPECT_EQ(linesOfBytes("a\n\nb\n"), (Lines{"a", "", "b"}));
    EXPECT_EQ(linesOfBytes("a\r\nc\r\r\nd\n\r\ne\r\n"), (Lines{"a", "c", "d", "", "e"}));
}

TEST(LineSourceTest, LoneCarriageReturnEndsALineOnlyWhereNothingElseDoes)
{
    EXPECT_EQ(linesOfBytes("a\rb\r\rc\r"), (Lines{"a", "b", "", "c"}));
    EXPECT_EQ(linesOfBytes("a\rb\nc"), (Lines{"a\rb", "c"}));
    const std::string late(200000, 'x');
    EXPECT_EQ(linesOfBytes("a\rb" + late + "\n"), Lines{"a\rb" + late});
}

TEST(LineSourceTest, LinesAheadAreHandedOutAfterwards)
{
    const TempFolder folder;
    writeBytes(folder / "box", "a\nbb\r\nc\n");
    LineSource source(folder / "box");
    EXPECT_EQ(*source.ahead(1), "bb");
    EXPECT_EQ(source.ahead(3), nullptr);
    std::string line;
    ASSERT_TRUE(source.next(line));
    EXPECT_EQ(source.position(), 2u);
    ASSERT_TRUE(source.next(line));
    EXPECT_EQ(line, "bb");
    EXPECT_EQ(source.lineBegin(), 2u);
    EXPECT_EQ(*source.ahead(0), "c");
    EXPECT_EQ(source.bytesAt(2, 3), "bb\r");
    EXPECT_EQ(source.bytesAt(100, 3), "");
}

TEST(LineSourceTest, LineEndOnTheEdgeOfTheBufferIsOneLineEnd)
{
    for (std::size_t size = 65530; size < 65540; ++size) {
        const std::string line(size, 'x');
        EXPECT_EQ(linesOfBytes(line + "\r\nb"), (Lines{line, "b"}));
        EXPECT_EQ(linesOfBytes(line + "\r\r\nb"), (Lines{line, "b"}));
    }
}

TEST(LineSourceTest, ARunOfNulsIsAGapAndFewOfThemAreText)
{
    const std::string gap(8, '\0'), few(7, '\0');
    EXPECT_EQ(linesOfBytes("a\n" + gap), Lines{"a"});
    EXPECT_EQ(linesOfBytes("a" + gap), Lines{"a"});
    EXPECT_EQ(linesOfBytes("a" + few), Lines{"a"}) << "at the end the fewest are one";
    EXPECT_EQ(linesOfBytes(gap + "b"), (Lines{"", "b"}));
    EXPECT_EQ(linesOfBytes("a" + gap + "b\n"), (Lines{"a", "", "b"}));
    EXPECT_EQ(linesOfBytes("a\n" + gap + "b"), (Lines{"a", "", "b"}));
    EXPECT_EQ(linesOfBytes("a" + few + "b"), Lines{"a" + few + "b"});
    for (std::size_t size = 65525; size < 65540; ++size) {
        const std::string line(size, 'x');
        EXPECT_EQ(linesOfBytes(line + gap + "b"), (Lines{line, "", "b"}));
        EXPECT_EQ(linesOfBytes(line + few + "b"), Lines{line + few + "b"});
    }
}

TEST(LineSourceTest, AnEmptyLastLineIsALine)
{
    EXPECT_EQ(linesOfBytes("a\n\n"), (Lines{"a", ""}));
}

TEST(LineSourceTest, EndlessLineComesInPieces)
{
    const auto lines = linesOfBytes(std::string(3u << 20, 'x'));
    EXPECT_GE(lines.size(), 2u);
    std::size_t total = 0;
    for (const auto& line : lines)
        total += line.size();
    EXPECT_EQ(total, 3u << 20);
}

}
}
