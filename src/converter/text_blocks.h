// Breaks the lines of a mail's text where its reader would lose something.
//
// The reader collects lines into blocks, closes a block after 33 lines or when it
// exceeds 4608 bytes, and decodes each block through a record of 4608 bytes; the rest
// of the block is lost. This class counts along. A line that would cross the limit is
// broken so that the block ends at byte 4607, followed by CR and LF; the record then
// cuts off only that LF. Blocks that would end one or two bytes earlier are padded
// with blanks.
#pragma once
#include <string>
#include <string_view>

namespace tolvek {

class TextBlocks {
public:
    static constexpr std::size_t kBlockSize = 4608;
    static constexpr int kBlockLines = 33;
    static constexpr int kBlankRun = 3; // every third empty line in a row is kept by the reader

    // Appends the line, with CR LF and perhaps in several pieces, to `out`.
    // Code page 932, no line end inside.
    void add(std::string& out, std::string_view line);

private:
    void addEmpty(std::string& out);
    void addPiece(std::string& out, std::string_view piece);
    void close();

    std::size_t size_ = 0;
    int lines_ = 0;
    int blanks_ = 0;
    bool holdsText_ = false; // a block of blanks alone is dropped at the next line
};

}
