// The lines of a mail file, read through one buffer, so that a box of any size
// costs the memory of its longest line.
//
// CR, LF, CR LF and CR CR LF (left by gateways) each end a line; a last line
// needs no end. A line longer than kLongestLine comes in pieces.
#pragma once
#include "platform/system/files.h"

#include <filesystem>
#include <string>
#include <vector>

namespace tolvek {

class LineSource {
public:
    static constexpr std::size_t kLongestLine = 1 << 20;

    // Throws std::system_error, as the reading does.
    explicit LineSource(const std::filesystem::path& path);

    // False at the end of the file; the line comes without its end.
    bool next(std::string& line);

private:
    bool ensure(std::size_t count); // that many bytes unread in the buffer, if the file has them
    void skipLineEnd();

    OpenFile file_;
    std::vector<char> buffer_;
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
    bool atEnd_ = false;
};

}
