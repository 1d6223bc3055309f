#include "platform/runtime/sequential_file.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace tolvek {

namespace {

constexpr std::size_t kPieceSize = 1 << 17;
constexpr char kEndOfText = '\x1a';

}

std::size_t InputFile::readPiece()
{
    try {
        return file_.read(piece_.data(), kPieceSize);
    } catch (const std::system_error&) {
        ended_ = true;
        buffer_.clear(); // the line that this read was to complete is dropped
        throw;
    }
}

bool InputFile::readMore()
{
    if (ended_) return false;
    // Views that were returned earlier become invalid here.
    buffer_.erase(0, std::exchange(position_, 0));
    const std::size_t before = buffer_.size();
    piece_.resize(kPieceSize);
    const std::size_t size = readPiece();
    buffer_.append(piece_, 0, size);
    const std::size_t end = buffer_.find(kEndOfText, before);
    ended_ = size == 0 || end != std::string::npos;
    buffer_.resize(std::min(end, buffer_.size()));
    return buffer_.size() > before;
}

bool InputFile::have(std::size_t count)
{
    while (rest().size() < count)
        if (!readMore()) return false;
    return true;
}

bool InputFile::isNext(std::string_view bytes)
{
    return have(bytes.size()) && rest().starts_with(bytes);
}

std::size_t InputFile::lengthUpTo(std::string_view stops)
{
    std::size_t searched = 0;
    for (;;) {
        const std::size_t found = stops.size() == 1 ? rest().find(stops.front(), searched)
                                                    : rest().find_first_of(stops, searched);
        if (found != std::string_view::npos) return found;
        // What has been searched isn't searched again.
        searched = rest().size();
        if (!readMore()) return searched;
    }
}

std::string_view InputFile::upTo(std::string_view stops)
{
    const std::size_t length = lengthUpTo(stops); // may read, which moves the buffer
    const std::string_view bytes = rest().substr(0, length);
    take(length);
    return bytes;
}

std::string_view InputFile::line()
{
    const std::size_t length = lengthUpTo("\r");
    have(length + 2); // a later read for the LF would move the returned bytes
    const std::string_view bytes = rest().substr(0, length);
    take(length);
    dropDelimiter();
    return bytes;
}

void InputFile::dropDelimiter()
{
    if (isNext("\r\n"))
        take(2);
    else if (isNext("\r") || isNext(","))
        take(1);
}

void OutputFile::write(std::string_view bytes)
{
    buffer_ += bytes;
    if (buffer_.size() >= kPieceSize) empty();
}

// A failed write isn't retried: part of it may be in the file already.
void OutputFile::empty()
{
    const std::string bytes = std::exchange(buffer_, {});
    if (!bytes.empty()) file_.write(bytes);
}

void OutputFile::flush()
{
    empty();
    file_.flush();
}

void OutputFile::close()
{
    empty();
    file_.close();
}

}
