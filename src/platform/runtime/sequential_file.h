// The two kinds of open text file behind the file numbers: bytes of code page
// 932, read and written through buffers. Failures are std::system_error.
//
// Reading looks for single bytes alone: those of delimiters are below 40h and so
// never the second half of a character.
#pragma once
#include "platform/runtime/paths.h"
#include "platform/system/files.h"

#include <string>
#include <string_view>

namespace tolvek {

// A byte 1A is its end, and so is a failed read: what stands after a gap can't be
// told from what stands before it, and a reader that asks for the end would ask
// for ever. What it hands out is valid until the next call.
class MappedInput {
public:
    explicit MappedInput(const Path& path) : file_(path, OpenFile::Mode::Read) {}

    bool atEnd() { return !have(1); }
    bool isNext(std::string_view bytes);
    void take(std::size_t count) { position_ += count; } // what isNext has seen

    // Up to CR, CR LF or the end; the line end is taken too.
    std::string_view line();
    // Up to one of the stops, which stays, or the end.
    std::string_view upTo(std::string_view stops);
    // One comma, CR or CR LF.
    void dropDelimiter();

private:
    bool have(std::size_t count);
    bool readMore();
    std::size_t readPiece();
    std::size_t lengthUpTo(std::string_view stops);
    std::string_view rest() const { return std::string_view(buffer_).substr(position_); }

    OpenFile file_;
    std::string buffer_;
    std::string piece_; // of its own: a failed reading mustn't leave its room among the bytes
    std::size_t position_ = 0;
    bool ended_ = false;
};

class OutputFile {
public:
    explicit OutputFile(const Path& path) : file_(path, OpenFile::Mode::Create) {}

    void write(std::string_view bytes);
    void flush(); // to the disk itself
    void close();

private:
    void empty();

    OpenFile file_;
    std::string buffer_;
};

}
