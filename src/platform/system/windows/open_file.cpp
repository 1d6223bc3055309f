#include "platform/system/files.h"
#include "platform/system/windows/handle.h"
#include "platform/system/windows/unlink.h"
#include "platform/system/windows/wide_path.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace tolvek {

namespace {

// Others may read, write, rename and remove the file meanwhile, as everywhere else.
constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr std::size_t kLargestPiece = 1 << 30; // of a single call

DWORD disposition(OpenFile::Mode mode)
{
    switch (mode) {
    case OpenFile::Mode::Read:
        return OPEN_EXISTING;
    case OpenFile::Mode::Create:
        // Not CREATE_ALWAYS, which refuses a hidden file.
        return OPEN_ALWAYS;
    case OpenFile::Mode::CreateNew:
    case OpenFile::Mode::Anew:
        break;
    }
    return CREATE_NEW;
}

Handle opened(const std::filesystem::path& path, OpenFile::Mode mode)
{
    const DWORD access = mode == OpenFile::Mode::Read ? GENERIC_READ : GENERIC_WRITE;
    // A folder can be opened with this flag only; it is refused with a name of its own
    // below.
    Handle file(::CreateFileW(widePath(path).c_str(), access, kShareAll, nullptr, disposition(mode),
                              FILE_ATTRIBUTE_NORMAL | FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    if (!file) throwSystemError(::GetLastError(), path);
    return file;
}

void refuseAllButFiles(HANDLE file, const std::filesystem::path& path)
{
    if (::GetFileType(file) != FILE_TYPE_DISK) throwSystemError(std::errc::invalid_argument, path);
    BY_HANDLE_FILE_INFORMATION about{};
    systemCall(path, ::GetFileInformationByHandle(file, &about));
    if (about.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
        throwSystemError(std::errc::is_a_directory, path);
}

// A volume itself has no name to give up.
void giveUpName(const std::filesystem::path& path)
{
    const DWORD failure = unlinkName(path);
    if (failure != ERROR_SUCCESS && failure != ERROR_FILE_NOT_FOUND &&
        failure != ERROR_PATH_NOT_FOUND)
        throwSystemError(failure, path);
}

DWORD pieceOf(std::size_t size)
{
    return static_cast<DWORD>(std::min(size, kLargestPiece));
}

OVERLAPPED at(std::uint64_t place)
{
    OVERLAPPED where{};
    where.Offset = static_cast<DWORD>(place);
    where.OffsetHigh = static_cast<DWORD>(place >> 32);
    return where;
}

}

struct OpenFile::Handle {
    Handle(const std::filesystem::path& named, Mode mode) : path(named), file(opened(named, mode))
    {
    }

    std::size_t readAt(std::uint64_t place, char* buffer, std::size_t size) const
    {
        DWORD count = 0;
        OVERLAPPED where = at(place);
        if (!::ReadFile(file.get(), buffer, pieceOf(size), &count, &where)) {
            if (::GetLastError() == ERROR_HANDLE_EOF) return 0;
            throwSystemError(::GetLastError(), path);
        }
        return count;
    }

    std::filesystem::path path;
    tolvek::Handle file;
    // Of the next read. The system's own position moves with every read, wherever it
    // was.
    std::uint64_t position = 0;
};

OpenFile::OpenFile(const std::filesystem::path& path, Mode mode)
{
    probeFile(mode == Mode::Read ? FileOperation::Open : FileOperation::Create, path);
    if (mode == Mode::Anew) giveUpName(path);
    handle_ = std::make_unique<Handle>(path, mode);
    if (mode == Mode::Read || mode == Mode::Create) refuseAllButFiles(handle_->file.get(), path);
    if (mode == Mode::Create) systemCall(path, ::SetEndOfFile(handle_->file.get()));
}

OpenFile::~OpenFile() = default;
OpenFile::OpenFile(OpenFile&&) noexcept = default;
OpenFile& OpenFile::operator=(OpenFile&&) noexcept = default;

std::size_t OpenFile::read(char* buffer, std::size_t size)
{
    if (!handle_) throwSystemError(std::errc::bad_file_descriptor, {});
    probeFile(FileOperation::Read, handle_->path);
    const std::size_t count = handle_->readAt(handle_->position, buffer, size);
    handle_->position += count;
    return count;
}

std::size_t OpenFile::readAt(std::uint64_t place, char* buffer, std::size_t size) const
{
    if (!handle_) throwSystemError(std::errc::bad_file_descriptor, {});
    probeFile(FileOperation::Read, handle_->path);
    std::size_t done = 0;
    while (done < size) {
        const std::size_t count = handle_->readAt(place + done, buffer + done, size - done);
        if (count == 0) break;
        done += count;
    }
    return done;
}

void OpenFile::write(std::string_view bytes)
{
    if (!handle_) throwSystemError(std::errc::bad_file_descriptor, {});
    probeFile(FileOperation::Write, handle_->path);
    while (!bytes.empty()) {
        DWORD count = 0;
        systemCall(handle_->path, ::WriteFile(handle_->file.get(), bytes.data(),
                                              pieceOf(bytes.size()), &count, nullptr));
        bytes.remove_prefix(count);
    }
}

void OpenFile::flush()
{
    if (!handle_) throwSystemError(std::errc::bad_file_descriptor, {});
    probeFile(FileOperation::Flush, handle_->path);
    systemCall(handle_->path, ::FlushFileBuffers(handle_->file.get()));
}

void OpenFile::close()
{
    if (!handle_) return;
    const std::unique_ptr<Handle> closing = std::move(handle_);
    systemCall(closing->path, closing->file.close());
}

}
