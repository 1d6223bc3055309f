#include "platform/system/file_stamp.h"
#include "platform/system/files.h"
#include "platform/system/windows/handle.h"
#include "platform/system/windows/unlink.h"
#include "platform/system/windows/wide_path.h"

#include <cstring>
#include <vector>

namespace tolvek {

namespace fs = std::filesystem;

namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// Opens a file or a folder as it is, without changing it.
Handle opened(const fs::path& path, DWORD access)
{
    return Handle(::CreateFileW(widePath(path).c_str(), access, kShareAll, nullptr, OPEN_EXISTING,
                                FILE_FLAG_BACKUP_SEMANTICS, nullptr));
}

DWORD attributesOf(const fs::path& path)
{
    return ::GetFileAttributesW(widePath(path).c_str());
}

bool isFolder(const fs::path& path)
{
    const DWORD attributes = attributesOf(path);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

// These codes mean that the file system doesn't support the call, or that only an
// administrator may make it, not that it failed.
bool isUnsupported(DWORD code)
{
    return code == ERROR_INVALID_FUNCTION || code == ERROR_NOT_SUPPORTED ||
           code == ERROR_INVALID_PARAMETER || code == ERROR_ACCESS_DENIED ||
           code == ERROR_CALL_NOT_IMPLEMENTED;
}

DWORD moved(const fs::path& from, const fs::path& to, DWORD flags)
{
    const BOOL done =
        ::MoveFileExW(widePath(from).c_str(), widePath(to).c_str(), flags | MOVEFILE_WRITE_THROUGH);
    return done ? ERROR_SUCCESS : ::GetLastError();
}

// FILE_RENAME_INFO with the flags of newer systems.
struct Renaming {
    DWORD flags;
    HANDLE folder;
    DWORD nameSize; // bytes
    wchar_t name[1];
};
constexpr auto kRenameClass = static_cast<FILE_INFO_BY_HANDLE_CLASS>(22);
constexpr DWORD kReplace = 1, kAtOnce = 2;

std::vector<std::byte> renamingTo(const std::wstring& name)
{
    std::vector<std::byte> bytes(sizeof(Renaming) + name.size() * sizeof(wchar_t));
    Renaming head{
        kReplace | kAtOnce, nullptr, static_cast<DWORD>(name.size() * sizeof(wchar_t)), {}};
    std::memcpy(bytes.data(), &head, sizeof head);
    std::memcpy(bytes.data() + offsetof(Renaming, name), name.data(), head.nameSize);
    return bytes;
}

// Also replaces a file that somebody has open, if he shares it; he keeps the old one.
DWORD movedOverOpen(const fs::path& from, const fs::path& to)
{
    const Handle file = opened(from, DELETE | SYNCHRONIZE);
    if (!file) return ::GetLastError();
    std::vector<std::byte> renaming = renamingTo(widePath(fs::absolute(to)));
    const BOOL done = ::SetFileInformationByHandle(file.get(), kRenameClass, renaming.data(),
                                                   static_cast<DWORD>(renaming.size()));
    return done ? ERROR_SUCCESS : ::GetLastError();
}

DWORD replaced(const fs::path& from, const fs::path& to)
{
    const DWORD failure = moved(from, to, MOVEFILE_REPLACE_EXISTING);
    if (failure != ERROR_ACCESS_DENIED && failure != ERROR_SHARING_VIOLATION) return failure;
    return movedOverOpen(from, to) == ERROR_SUCCESS ? ERROR_SUCCESS : failure;
}

std::int64_t nanoseconds(const FILETIME& time)
{
    const std::uint64_t ticks = std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
    return static_cast<std::int64_t>(ticks * 100);
}

std::uint64_t whole(DWORD high, DWORD low)
{
    return std::uint64_t{high} << 32 | low;
}

void copyReadOnlyMark(const fs::path& from, const fs::path& to)
{
    constexpr DWORD mark = FILE_ATTRIBUTE_READONLY;
    const DWORD wanted = attributesOf(from), present = attributesOf(to);
    if (wanted == INVALID_FILE_ATTRIBUTES) throwSystemError(::GetLastError(), from);
    if (present == INVALID_FILE_ATTRIBUTES) throwSystemError(::GetLastError(), to);
    systemCall(to, ::SetFileAttributesW(widePath(to).c_str(), (present & ~mark) | (wanted & mark)));
}

// Who may do what with the file. Empty on a file system without such lists.
std::vector<std::byte> rightsOf(const fs::path& path)
{
    DWORD size = 0;
    ::GetFileSecurityW(widePath(path).c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    std::vector<std::byte> rights(size);
    if (size == 0 || !::GetFileSecurityW(widePath(path).c_str(), DACL_SECURITY_INFORMATION,
                                         rights.data(), size, &size))
        return {};
    return rights;
}

}

bool isFullDisk(int systemError)
{
    constexpr int kQuotaExceeded = 1295; // ERROR_DISK_QUOTA_EXCEEDED
    return systemError == ERROR_DISK_FULL || systemError == ERROR_HANDLE_DISK_FULL ||
           systemError == kQuotaExceeded;
}

fs::path nameOnDisk(const fs::path& path)
{
    WIN32_FIND_DATAW found{};
    const HANDLE search = ::FindFirstFileW(widePath(path).c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return path.filename();
    ::FindClose(search);
    return found.cFileName;
}

// Beyond the mark the system itself is asked whether it would let this user write: rights
// lists and write-protected media are in its answer. Nothing is written.
bool isReadOnly(const fs::path& path)
{
    const DWORD attributes = attributesOf(path);
    if (attributes == INVALID_FILE_ATTRIBUTES) return false;
    // Of a folder the mark says nothing about writing.
    const bool isFile = (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
    if (isFile && (attributes & FILE_ATTRIBUTE_READONLY) != 0) return true;
    if (opened(path, FILE_WRITE_DATA)) return false;
    const DWORD failure = ::GetLastError();
    return failure == ERROR_ACCESS_DENIED || failure == ERROR_WRITE_PROTECT;
}

FileStamp fileStamp(const fs::path& path)
{
    const Handle file = opened(path, FILE_READ_ATTRIBUTES);
    if (!file) throwSystemError(::GetLastError(), path);
    BY_HANDLE_FILE_INFORMATION about{};
    systemCall(path, ::GetFileInformationByHandle(file.get(), &about));
    return {about.dwVolumeSerialNumber, whole(about.nFileIndexHigh, about.nFileIndexLow),
            whole(about.nFileSizeHigh, about.nFileSizeLow), nanoseconds(about.ftLastWriteTime)};
}

void removeFile(const fs::path& path)
{
    probeFile(FileOperation::Remove, path);
    const DWORD failure = unlinkName(path);
    if (failure == ERROR_DIRECTORY) throwSystemError(std::errc::is_a_directory, path);
    if (failure != ERROR_SUCCESS) throwSystemError(failure, path);
}

void renameFile(const fs::path& from, const fs::path& to)
{
    probeFile(FileOperation::Rename, from);
    const DWORD failure = despiteScanners([&] { return moved(from, to, 0); });
    if (failure == ERROR_ALREADY_EXISTS || failure == ERROR_FILE_EXISTS)
        throwSystemError(std::errc::file_exists, to);
    if (failure != ERROR_SUCCESS) throwSystemError(failure, from);
}

void replaceFile(const fs::path& from, const fs::path& to)
{
    probeFile(FileOperation::Replace, to);
    if (isFolder(to)) throwSystemError(std::errc::is_a_directory, to);
    WithoutReadOnlyMark unmarked(to);
    const DWORD failure = despiteScanners([&] { return replaced(from, to); });
    if (failure != ERROR_SUCCESS) throwSystemError(failure, to);
    unmarked.keepOff();
}

void linkFile(const fs::path& existing, const fs::path& added)
{
    probeFile(FileOperation::Link, added);
    systemCall(added,
               ::CreateHardLinkW(widePath(added).c_str(), widePath(existing).c_str(), nullptr));
}

void copyOwnerAndMode(const fs::path& from, const fs::path& to)
{
    copyReadOnlyMark(from, to);
    std::vector<std::byte> rights = rightsOf(from);
    if (rights.empty()) return;
    // Only who may change the rights of a file can give it those of another.
    if (!::SetFileSecurityW(widePath(to).c_str(), DACL_SECURITY_INFORMATION, rights.data()) &&
        !isUnsupported(::GetLastError()))
        throwSystemError(::GetLastError(), to);
}

void flushFileToDisk(const fs::path& path)
{
    probeFile(FileOperation::Flush, path);
    Handle file = opened(path, GENERIC_WRITE);
    if (!file && ::GetLastError() == ERROR_ACCESS_DENIED) {
        // Only a file opened for writing can be flushed.
        const WithoutReadOnlyMark unmarked(path);
        file = opened(path, GENERIC_WRITE);
        if (!file) throwSystemError(ERROR_ACCESS_DENIED, path);
    }
    if (!file) throwSystemError(::GetLastError(), path);
    systemCall(path, ::FlushFileBuffers(file.get()));
}

void flushFolder(const fs::path& folder)
{
    probeFile(FileOperation::FlushFolder, folder);
    const DWORD attributes = attributesOf(folder);
    if (attributes == INVALID_FILE_ATTRIBUTES) throwSystemError(::GetLastError(), folder);
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
        throwSystemError(std::errc::not_a_directory, folder);
    const Handle file = opened(folder, GENERIC_WRITE);
    // Renaming has written the names through already, as far as the system offers that.
    const bool done = file && ::FlushFileBuffers(file.get());
    if (!done && !isUnsupported(::GetLastError())) throwSystemError(::GetLastError(), folder);
}

// Only an administrator may flush a whole file system, so its files in this folder are
// flushed one by one.
void flushFileSystemOf(const fs::path& folder)
{
    probeFile(FileOperation::Flush, folder);
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
        if (!entry.is_regular_file()) continue;
        const Handle file = opened(entry.path(), GENERIC_WRITE);
        if (file) systemCall(entry.path(), ::FlushFileBuffers(file.get()));
    }
}

}
