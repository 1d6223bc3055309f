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

TEST(LineSource, TakesEveryKindOfLineEnd)
{
    EXPECT_EQ(linesOfBytes(""), Lines{});
    EXPECT_EQ(linesOfBytes("a"), Lines{"a"});
    EXPECT_EQ(linesOfBytes("a\n\nb\n"), (Lines{"a", "", "b"}));
    EXPECT_EQ(linesOfBytes("a\r\nb\rc\r\r\nd\r\re\r"), (Lines{"a", "b", "c", "d", "", "e"}));
}

TEST(LineSource, LineEndOnTheEdgeOfTheBufferIsOneLineEnd)
{
    for (std::size_t size = 65530; size < 65540; ++size) {
        const std::string line(size, 'x');
        EXPECT_EQ(linesOfBytes(line + "\r\nb"), (Lines{line, "b"}));
        EXPECT_EQ(linesOfBytes(line + "\r\r\nb"), (Lines{line, "b"}));
    }
}

TEST(LineSource, EndlessLineComesInPieces)
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
