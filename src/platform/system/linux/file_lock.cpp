#include "platform/system/file_lock.h"
#include "platform/system/linux/descriptor.h"

#include <sys/stat.h>

namespace tolvek {

namespace {

// An open-file-description lock. Unlike a lock of the process, it isn't lost when
// another descriptor of the same file is closed. Old systems and some file systems
// support only the lock of the process; the two kinds exclude each other.
int lockCommand(int descriptor, int command)
{
    struct flock whole {};
    whole.l_type = F_WRLCK;
    whole.l_whence = SEEK_SET;
    int result = 0;
    do
        result = fcntl(descriptor, command, &whole);
    while (result != 0 && errno == EINTR);
    return result == 0 ? 0 : errno;
}

int lockWhole(int descriptor)
{
    const int code = lockCommand(descriptor, F_OFD_SETLK);
    return code == EINVAL ? lockCommand(descriptor, F_SETLK) : code;
}

// Whoever may write to the folder gets read and write access to the lock file.
mode_t modeInFolder(const std::filesystem::path& path)
{
    struct stat folder {};
    mode_t mode = S_IRUSR | S_IWUSR;
    if (stat(path.has_parent_path() ? path.parent_path().c_str() : ".", &folder) != 0) return mode;
    if (folder.st_mode & S_IWGRP) mode |= S_IRGRP | S_IWGRP;
    if (folder.st_mode & S_IWOTH) mode |= S_IROTH | S_IWOTH;
    return mode;
}

// The mode of our own file is set again: the folder may have been opened to others
// since, and the user's umask is meant for mails, not for this file.
Descriptor openedFile(const std::filesystem::path& path, FileLock::Missing missing)
{
    const int make = missing == FileLock::Missing::Make ? O_CREAT : 0;
    const mode_t mode = modeInFolder(path);
    // O_NOFOLLOW: a link could redirect the lock to another file.
    Descriptor file(open(path.c_str(), O_RDWR | make | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, mode));
    if (file.number() >= 0) fchmod(file.number(), mode);
    return file;
}

// Checks that the name still leads to this file; another process may have removed
// or replaced it before the lock was taken.
bool isStillNamed(int descriptor, const std::filesystem::path& path)
{
    struct stat locked {
    }, named{};
    return fstat(descriptor, &locked) == 0 && stat(path.c_str(), &named) == 0 &&
           locked.st_dev == named.st_dev && locked.st_ino == named.st_ino;
}

}

FileLock::FileLock(const std::filesystem::path& path, Missing missing)
{
    constexpr int kTries = 10; // each try follows a removal by somebody else
    for (int i = 0; i < kTries && !isHeld(); ++i) {
        Descriptor file = openedFile(path, missing);
        if (file.number() < 0) return;
        const int code = lockWhole(file.number());
        // POSIX permits either code for a lock that is held.
        heldElsewhere_ = code == EAGAIN || code == EACCES;
        if (code != 0) return;
        if (isStillNamed(file.number(), path)) handle_ = file.release();
    }
}

FileLock::~FileLock()
{
    if (isHeld()) close(static_cast<int>(handle_));
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
