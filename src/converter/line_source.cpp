#include "converter/line_source.h"

#include <algorithm>

namespace tolvek {

LineSource::LineSource(const std::filesystem::path& path)
    : file_(path, OpenFile::Mode::Read), buffer_(1 << 16)
{
}

bool LineSource::ensure(std::size_t count)
{
    while (end_ - begin_ < count && !atEnd_) {
        std::copy(buffer_.begin() + static_cast<std::ptrdiff_t>(begin_),
                  buffer_.begin() + static_cast<std::ptrdiff_t>(end_), buffer_.begin());
        end_ -= begin_;
        begin_ = 0;
        const std::size_t got = file_.read(buffer_.data() + end_, buffer_.size() - end_);
        end_ += got;
        atEnd_ = got == 0;
    }
    return end_ - begin_ >= count;
}

void LineSource::skipLineEnd()
{
    if (buffer_[begin_++] == '\n') return;
    const auto at = [this](std::size_t offset, char c) {
        return ensure(offset + 1) && buffer_[begin_ + offset] == c;
    };
    if (at(0, '\n'))
        begin_ += 1;
    else if (at(0, '\r') && at(1, '\n'))
        begin_ += 2;
}

bool LineSource::next(std::string& line)
{
    line.clear();
    if (!ensure(1)) return false;
    while (ensure(1) && line.size() < kLongestLine) {
        const char* first = buffer_.data() + begin_;
        const char* last = buffer_.data() + end_;
        const char* stop = std::find_if(first, last, [](char c) { return c == '\n' || c == '\r'; });
        line.append(first, stop);
        begin_ += static_cast<std::size_t>(stop - first);
        if (stop == last) continue;
        skipLineEnd();
        return true;
    }
    return true;
}

}
