#include "platform/system/files.h"
#include "platform/system/linux/system_failure.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace tolvek {

namespace {

constexpr mode_t kNewFileMode = 0600; // mail is private

int openFlags(OpenFile::Mode mode)
{
    switch (mode) {
    case OpenFile::Mode::Read:
        return O_RDONLY | O_NONBLOCK; // opening a pipe that nobody writes to would block otherwise
    case OpenFile::Mode::Create:
        return O_WRONLY | O_CREAT | O_TRUNC;
    case OpenFile::Mode::CreateNew:
    case OpenFile::Mode::Anew:
        break;
    }
    return O_WRONLY | O_CREAT | O_EXCL;
}

void giveUpName(const std::filesystem::path& path)
{
    if (unlink(path.c_str()) != 0 && errno != ENOENT) throwSystemError(errno, path);
}

// The system opens a folder for reading and fails only at the first read. A pipe or
// a device may never end.
void refuseAllButFiles(int descriptor, const std::filesystem::path& path)
{
    struct stat status {};
    systemCall(path, [&] { return fstat(descriptor, &status); });
    if (S_ISDIR(status.st_mode)) throwSystemError(EISDIR, path);
    if (!S_ISREG(status.st_mode)) throwSystemError(EINVAL, path);
}

}

struct OpenFile::Handle {
    Handle(const std::filesystem::path& file, Mode mode)
        : path(file), descriptor(systemCall(file, [&] {
              return open(file.c_str(), openFlags(mode) | O_CLOEXEC, kNewFileMode);
          }))
    {
    }
    ~Handle()
    {
        if (descriptor >= 0) ::close(descriptor);
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    std::filesystem::path path;
    int descriptor;
};

OpenFile::OpenFile(const std::filesystem::path& path, Mode mode)
{
    probeFile(mode == Mode::Read ? FileOperation::Open : FileOperation::Create, path);
    if (mode == Mode::Anew) giveUpName(path);
    handle_ = std::make_unique<Handle>(path, mode);
    if (mode == Mode::Read) refuseAllButFiles(handle_->descriptor, path);
}

OpenFile::~OpenFile() = default;
OpenFile::OpenFile(OpenFile&&) noexcept = default;
OpenFile& OpenFile::operator=(OpenFile&&) noexcept = default;

std::size_t OpenFile::read(char* buffer, std::size_t size)
{
    if (!handle_) throwSystemError(EBADF, {});
    probeFile(FileOperation::Read, handle_->path);
    return static_cast<std::size_t>(
        systemCall(handle_->path, [&] { return ::read(handle_->descriptor, buffer, size); }));
}

std::size_t OpenFile::readAt(std::uint64_t place, char* buffer, std::size_t size) const
{
    if (!handle_) throwSystemError(EBADF, {});
    probeFile(FileOperation::Read, handle_->path);
    std::size_t done = 0;
    while (done < size) {
        const auto read = systemCall(handle_->path, [&] {
            return ::pread(handle_->descriptor, buffer + done, size - done,
                           static_cast<off_t>(place + done));
        });
        if (read == 0) break;
        done += static_cast<std::size_t>(read);
    }
    return done;
}

void OpenFile::write(std::string_view bytes)
{
    if (!handle_) throwSystemError(EBADF, {});
    probeFile(FileOperation::Write, handle_->path);
    // write() may accept only a part of the bytes.
    while (!bytes.empty()) {
        const auto written = systemCall(handle_->path, [&] {
            return ::write(handle_->descriptor, bytes.data(), bytes.size());
        });
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

void OpenFile::flush()
{
    if (!handle_) throwSystemError(EBADF, {});
    probeFile(FileOperation::Flush, handle_->path);
    systemCall(handle_->path, [&] { return fsync(handle_->descriptor); });
}

void OpenFile::close()
{
    if (!handle_) return;
    const std::unique_ptr<Handle> closing = std::move(handle_);
    const int descriptor = std::exchange(closing->descriptor, -1);
    // Never repeat close() after EINTR: the descriptor is already closed and its
    // number may be in use again.
    if (::close(descriptor) != 0 && errno != EINTR) throwSystemError(errno, closing->path);
}

}
