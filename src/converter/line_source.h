// Reads the lines of a mail file through one buffer, so that a box of any size takes
// the memory of its longest line and of the lines looked at ahead.
//
// LF, CR LF and CR CR LF (left by gateways) each end a line; the last line needs no
// end. In a file without any LF a CR ends a line; in others it is part of its line. A
// line longer than kLongestLine comes in pieces.
//
// A run of NULs is what a crashed file system leaves in place of bytes that never
// reached the disk. It ends the line before it. At the end of the file it is dropped;
// elsewhere it is an empty line, so that the mail after it is found.
#pragma once
#include "platform/system/files.h"

#include <cstdint>
#include <deque>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tolvek {

class LineSource {
public:
    static constexpr std::size_t kLongestLine = 1 << 20;

    // Throws std::system_error, as all reading does.
    explicit LineSource(const std::filesystem::path& path);

    // False at the end of the file; the line comes without its end.
    bool next(std::string& line);

    // A line further on; 0 is the one that next() returns next. Null beyond the end.
    // The pointer is valid until the next call of next().
    const std::string* ahead(std::size_t index);

    // Positions in the file: of the line returned last, and of the next one.
    std::uint64_t lineBegin() const { return lineBegin_; }
    std::uint64_t position() const
    {
        if (!queue_.empty()) return queue_.front().begin;
        return rest_ ? rest_->begin : read_;
    }

    // Bytes of the file at another position; fewer at its end.
    std::string bytesAt(std::uint64_t place, std::size_t size) const;

private:
    struct Line {
        std::string text;
        std::uint64_t begin = 0;
    };
    bool readLine(Line& line);
    bool readBytes(std::string& line); // up to the line's end
    std::size_t gapIn(std::string_view line);
    bool skipNuls();
    bool fill();
    void dropCarriageReturns(std::string& line) const;

    OpenFile file_;
    bool lineFeeds_; // the file contains a LF
    std::vector<char> buffer_;
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
    std::uint64_t read_ = 0;
    std::uint64_t lineBegin_ = 0;
    std::deque<Line> queue_;
    std::optional<Line> rest_; // of a line with a gap in it
};

}
