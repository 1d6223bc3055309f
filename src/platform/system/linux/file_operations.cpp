#include "platform/system/files.h"
#include "platform/system/linux/descriptor.h"
#include "platform/system/linux/rename_fallback.h"
#include "platform/system/linux/system_failure.h"

#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tolvek {

namespace fs = std::filesystem;

namespace {

// A descriptor that is open for one flush.
class FlushHandle {
public:
    FlushHandle(const fs::path& path, int flags)
        : path_(path),
          descriptor_(systemCall(path, [&] { return open(path.c_str(), flags | O_CLOEXEC); }))
    {
    }
    ~FlushHandle() { close(descriptor_); }
    FlushHandle(const FlushHandle&) = delete;
    FlushHandle& operator=(const FlushHandle&) = delete;

    void flush()
    {
        systemCall(path_, [&] { return fsync(descriptor_); });
    }

private:
    const fs::path& path_;
    int descriptor_;
};

mode_t allWriteBits()
{
    return S_IWUSR | S_IWGRP | S_IWOTH;
}

bool noWriteBit(const struct stat& status)
{
    // For the owner only the owner's bit decides; for anyone else the file is
    // read-only if no bit is set.
    const bool owner = status.st_uid == geteuid();
    return (status.st_mode & (owner ? S_IWUSR : allWriteBits())) == 0;
}

// These codes mean that the file system doesn't support the call, not that it
// failed.
bool unknownToFileSystem(int code)
{
    return code == EINVAL || code == ENOSYS || code == EOPNOTSUPP;
}

}

bool isFullDisk(int systemError)
{
    return systemError == ENOSPC || systemError == EDQUOT;
}

fs::path nameOnDisk(const fs::path& path)
{
    return path.filename();
}

bool isReadOnly(const fs::path& path)
{
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) return false;
    if (noWriteBit(status)) return true;
    return faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0 &&
           (errno == EACCES || errno == EROFS || errno == EPERM);
}

FileStamp fileStamp(const fs::path& path)
{
    constexpr std::int64_t kSecond = 1'000'000'000;
    struct stat status {};
    systemCall(path, [&] { return stat(path.c_str(), &status); });
    return {status.st_dev, status.st_ino, static_cast<std::uint64_t>(status.st_size),
            status.st_mtim.tv_sec * kSecond + status.st_mtim.tv_nsec};
}

void removeFile(const fs::path& path)
{
    probeFile(FileOperation::Remove, path);
    systemCall(path, [&] { return unlink(path.c_str()); });
}

void renameAfterLooking(const fs::path& from, const fs::path& to)
{
    struct stat ignored {};
    // lstat, because a dangling link occupies the name too.
    if (lstat(to.c_str(), &ignored) == 0) throwSystemError(EEXIST, to);
    systemCall(from, [&] { return std::rename(from.c_str(), to.c_str()); });
}

void renameByLink(const fs::path& from, const fs::path& to)
{
    if (link(from.c_str(), to.c_str()) == 0) {
        systemCall(from, [&] { return unlink(from.c_str()); });
        return;
    }
    if (errno != EPERM && !unknownToFileSystem(errno))
        throwSystemError(errno, errno == EEXIST ? to : from);
    renameAfterLooking(from, to);
}

void renameFile(const fs::path& from, const fs::path& to)
{
    probeFile(FileOperation::Rename, from);
    // The check for the target and the rename in one atomic call, where it is
    // supported.
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return;
    if (!unknownToFileSystem(errno)) throwSystemError(errno, errno == EEXIST ? to : from);
    renameByLink(from, to);
}

void replaceFile(const fs::path& from, const fs::path& to)
{
    probeFile(FileOperation::Replace, to);
    systemCall(to, [&] { return std::rename(from.c_str(), to.c_str()); });
}

void linkFile(const fs::path& existing, const fs::path& added)
{
    probeFile(FileOperation::Link, added);
    systemCall(added, [&] { return link(existing.c_str(), added.c_str()); });
}

void copyOwnerAndMode(const fs::path& from, const fs::path& to)
{
    struct stat status {};
    systemCall(from, [&] { return stat(from.c_str(), &status); });
    const bool given = chown(to.c_str(), status.st_uid, status.st_gid) == 0;
    // Only the superuser may change the owner.
    if (!given && errno != EPERM) throwSystemError(errno, to);
    systemCall(to, [&] { return chmod(to.c_str(), status.st_mode & 07777); });
}

void flushFileToDisk(const fs::path& path)
{
    probeFile(FileOperation::Flush, path);
    FlushHandle(path, O_RDONLY).flush();
}

void flushFolder(const fs::path& folder)
{
    probeFile(FileOperation::FlushFolder, folder);
    try {
        FlushHandle(folder, O_RDONLY | O_DIRECTORY).flush();
    } catch (const std::system_error& error) {
        // Some file systems don't support flushing a folder; they order changes of
        // names themselves.
        if (!unknownToFileSystem(error.code().value())) throw;
    }
}

void flushFileSystemOf(const fs::path& folder)
{
    probeFile(FileOperation::Flush, folder);
    const Descriptor opened(systemCall(
        folder, [&] { return open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
    systemCall(folder, [&] { return syncfs(opened.number()); });
}

}
