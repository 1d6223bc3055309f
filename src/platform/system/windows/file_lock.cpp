#include "platform/system/file_lock.h"
#include "platform/system/windows/handle.h"
#include "platform/system/windows/wide_path.h"

namespace tolvek {

namespace {

// Far beyond the end of any file: the system keeps others from reading locked bytes, and
// whoever locks the whole file on another system locks this place too.
constexpr DWORD kPlace = 0, kPlaceHigh = 0x4000'0000;

Handle openedFile(const std::filesystem::path& path, FileLock::Missing missing)
{
    constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const DWORD make = missing == FileLock::Missing::Make ? OPEN_ALWAYS : OPEN_EXISTING;
    // Not through a link, which could redirect the lock to another file.
    return Handle(::CreateFileW(widePath(path).c_str(), GENERIC_READ | GENERIC_WRITE, shareAll,
                                nullptr, make, FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
}

DWORD lockFile(HANDLE file)
{
    OVERLAPPED place{};
    place.Offset = kPlace;
    place.OffsetHigh = kPlaceHigh;
    constexpr DWORD flags = LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY;
    return ::LockFileEx(file, flags, 0, 1, 0, &place) ? ERROR_SUCCESS : ::GetLastError();
}

bool isLink(HANDLE file)
{
    BY_HANDLE_FILE_INFORMATION about{};
    return !::GetFileInformationByHandle(file, &about) ||
           (about.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

bool isSame(HANDLE one, HANDLE other)
{
    BY_HANDLE_FILE_INFORMATION a{}, b{};
    return ::GetFileInformationByHandle(one, &a) && ::GetFileInformationByHandle(other, &b) &&
           a.dwVolumeSerialNumber == b.dwVolumeSerialNumber &&
           a.nFileIndexHigh == b.nFileIndexHigh && a.nFileIndexLow == b.nFileIndexLow;
}

// Checks that the name still leads to this file; another process may have removed or
// replaced it before the lock was taken.
bool isStillNamed(HANDLE file, const std::filesystem::path& path)
{
    const Handle named = openedFile(path, FileLock::Missing::Leave);
    return named && isSame(file, named.get());
}

}

FileLock::FileLock(const std::filesystem::path& path, Missing missing)
{
    constexpr int kTries = 10; // each try follows a removal by somebody else
    for (int i = 0; i < kTries && !isHeld(); ++i) {
        Handle file = openedFile(path, missing);
        if (!file || isLink(file.get())) return;
        const DWORD code = lockFile(file.get());
        heldElsewhere_ = code == ERROR_LOCK_VIOLATION || code == ERROR_IO_PENDING;
        if (code != ERROR_SUCCESS) return;
        if (isStillNamed(file.get(), path))
            handle_ = reinterpret_cast<std::intptr_t>(file.release());
    }
}

FileLock::~FileLock()
{
    if (isHeld()) ::CloseHandle(reinterpret_cast<HANDLE>(handle_));
}

FileLock::FileLock(FileLock&& other) noexcept
    : handle_(std::exchange(other.handle_, kNone)), heldElsewhere_(other.heldElsewhere_)
{
}

FileLock& FileLock::operator=(FileLock&& other) noexcept
{
    std::swap(handle_, other.handle_);
    std::swap(heldElsewhere_, other.heldElsewhere_);
    return *this;
}

}
