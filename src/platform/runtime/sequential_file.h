// The two kinds of open text files behind the file numbers: bytes of code page 932,
// read and written through buffers. Failures are std::system_error.
//
// Reading searches for single bytes. That is safe because the delimiters are below
// 40h and therefore never the second byte of a character.
#pragma once
#include "platform/runtime/paths.h"
#include "platform/system/files.h"

#include <string>
#include <string_view>

namespace tolvek {

// A byte 1A ends the file, and so does a failed read: what follows the gap can't be
// told from what precedes it, and a reader that waits for the end would never get
// there. Returned views are valid until the next call.
class InputFile {
public:
    explicit InputFile(const Path& path) : file_(path, OpenFile::Mode::Read) {}

    bool atEnd() { return !have(1); }
    bool isNext(std::string_view bytes);
    void take(std::size_t count) { position_ += count; } // the bytes that isNext has matched

    // The text up to CR, CR LF or the end. Skips the line end too.
    std::string_view line();
    // The text up to one of the stop characters, which isn't skipped, or up to the
    // end.
    std::string_view upTo(std::string_view stops);
    // Skips one comma, CR or CR LF.
    void dropDelimiter();

private:
    bool have(std::size_t count);
    bool readMore();
    std::size_t readPiece();
    std::size_t lengthUpTo(std::string_view stops);
    std::string_view rest() const { return std::string_view(buffer_).substr(position_); }

    OpenFile file_;
    std::string buffer_;
    std::string piece_; // separate, so that a failed read can't leave unfilled bytes in buffer_
    std::size_t position_ = 0;
    bool ended_ = false;
};

class OutputFile {
public:
    explicit OutputFile(const Path& path) : file_(path, OpenFile::Mode::Create) {}

    void write(std::string_view bytes);
    void flush(); // to the disk
    void close();

private:
    void empty();

    OpenFile file_;
    std::string buffer_;
};

}
