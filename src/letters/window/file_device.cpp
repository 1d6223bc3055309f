#include "letters/window/file_device.h"

#include <system_error>

namespace tolvek {

FileDevice::FileDevice(const std::filesystem::path& path) : file_(path, OpenFile::Mode::Anew)
{
    open(QIODevice::WriteOnly);
}

qint64 FileDevice::writeData(const char* bytes, qint64 size)
{
    if (failure_) return -1;
    try {
        file_.write({bytes, static_cast<std::size_t>(size)});
        return size;
    } catch (const std::system_error&) {
        failure_ = std::current_exception();
        return -1;
    }
}

void FileDevice::finish()
{
    QIODevice::close();
    if (failure_) std::rethrow_exception(failure_);
    file_.close();
}

}
