#include "converter/line_source.h"

#include <algorithm>
#include <cstring>

namespace tolvek {

namespace {

constexpr std::size_t kBuffer = 1 << 16;

// Decides once for the file whether LF or CR ends its lines.
bool hasLineFeed(const std::filesystem::path& path)
{
    OpenFile file(path, OpenFile::Mode::Read);
    std::vector<char> buffer(kBuffer);
    while (const std::size_t got = file.read(buffer.data(), buffer.size())) {
        const auto end = buffer.begin() + static_cast<std::ptrdiff_t>(got);
        if (std::find(buffer.begin(), end, '\n') != end) return true;
    }
    return false;
}

}

LineSource::LineSource(const std::filesystem::path& path)
    : file_(path, OpenFile::Mode::Read), lineFeeds_(hasLineFeed(path)), buffer_(kBuffer)
{
}

bool LineSource::fill()
{
    if (begin_ < end_) return true;
    begin_ = 0;
    end_ = file_.read(buffer_.data(), buffer_.size());
    return end_ > 0;
}

// Up to two CRs before a LF belong to the line end; more are text.
void LineSource::dropCarriageReturns(std::string& line) const
{
    if (!lineFeeds_) return;
    for (int count = 0; count < 2 && !line.empty() && line.back() == '\r'; ++count)
        line.pop_back();
}

bool LineSource::readBytes(std::string& line)
{
    line.clear();
    if (!fill()) return false;
    const char mark = lineFeeds_ ? '\n' : '\r';
    // The limit is checked per buffer, so a piece may exceed it by one buffer.
    while (line.size() < kLongestLine && fill()) {
        const char* first = buffer_.data() + begin_;
        const char* last = buffer_.data() + end_;
        const void* place = std::memchr(first, mark, static_cast<std::size_t>(last - first));
        const bool found = place != nullptr;
        const char* stop = found ? static_cast<const char*>(place) : last;
        line.append(first, stop);
        const auto taken = static_cast<std::size_t>(stop - first) + (found ? 1 : 0);
        begin_ += taken;
        read_ += taken;
        if (found) break;
    }
    dropCarriageReturns(line);
    return true;
}

// Skips NULs; false if nothing follows them.
bool LineSource::skipNuls()
{
    while (fill() && buffer_[begin_] == '\0') {
        ++begin_;
        ++read_;
    }
    return fill();
}

// The start of NULs that are a gap: eight in a row, or any number at the end of the
// file. Fewer may be part of UTF-16 text.
std::size_t LineSource::gapIn(std::string_view line)
{
    constexpr std::string_view kShortest("\0\0\0\0\0\0\0\0", 8);
    const std::size_t gap = line.find(kShortest);
    if (gap != std::string_view::npos || !line.ends_with('\0') || fill()) return gap;
    return line.find_last_not_of('\0') + 1;
}

// The text before a gap, the gap itself and the text after it are returned as separate
// lines.
bool LineSource::readLine(Line& line)
{
    if (rest_) {
        line = std::move(*rest_);
        rest_.reset();
    } else {
        line.begin = read_;
        if (!readBytes(line.text)) return false;
    }
    const std::size_t gap = gapIn(line.text);
    if (gap == std::string::npos) return true;
    const std::size_t after = gap > 0 ? gap : line.text.find_first_not_of('\0');
    const bool hasRest = after != std::string::npos;
    if (hasRest) rest_ = Line{line.text.substr(after), line.begin + after};
    // At the beginning of a line the gap itself is the (empty) line; skipNuls()
    // consumes the rest of a long one.
    line.text.resize(gap);
    return hasRest || skipNuls();
}

bool LineSource::next(std::string& line)
{
    lineBegin_ = position();
    if (queue_.empty()) {
        Line read{std::move(line), 0}; // its memory is reused
        const bool found = readLine(read);
        line = std::move(read.text);
        return found;
    }
    line = std::move(queue_.front().text);
    queue_.pop_front();
    return true;
}

const std::string* LineSource::ahead(std::size_t index)
{
    while (queue_.size() <= index) {
        Line line;
        if (!readLine(line)) return nullptr;
        queue_.push_back(std::move(line));
    }
    return &queue_[index].text;
}

std::string LineSource::bytesAt(std::uint64_t place, std::size_t size) const
{
    std::string bytes(size, '\0');
    bytes.resize(file_.readAt(place, bytes.data(), size));
    return bytes;
}

}
