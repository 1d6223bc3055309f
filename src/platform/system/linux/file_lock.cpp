#include "platform/system/file_lock.h"
#include "platform/system/linux/descriptor.h"

#include <sys/stat.h>

namespace tolvek {

namespace {

// A lock of the open file, not of the process: no other descriptor of the file
// that is closed takes it away. Old systems and some file systems know only the
// process's own; the two kinds exclude each other.
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

// As far as the folder lets others in to write.
mode_t modeInFolder(const std::filesystem::path& path)
{
    struct stat folder {};
    mode_t mode = S_IRUSR | S_IWUSR;
    if (stat(path.has_parent_path() ? path.parent_path().c_str() : ".", &folder) != 0) return mode;
    if (folder.st_mode & S_IWGRP) mode |= S_IRGRP | S_IWGRP;
    if (folder.st_mode & S_IWOTH) mode |= S_IROTH | S_IWOTH;
    return mode;
}

// The mode is set again on a file of ours: the folder may have been opened to
// others since, and the user's mask is about mails.
Descriptor openedFile(const std::filesystem::path& path, FileLock::Missing missing)
{
    const int make = missing == FileLock::Missing::Make ? O_CREAT : 0;
    const mode_t mode = modeInFolder(path);
    Descriptor file(
        open(path.c_str(), O_RDWR | make | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, mode));
    if (file.number() >= 0) fchmod(file.number(), mode);
    return file;
}

// The name may lead to another file by now.
bool isStillNamed(int descriptor, const std::filesystem::path& path)
{
    struct stat locked {}, named {};
    return fstat(descriptor, &locked) == 0 && stat(path.c_str(), &named) == 0 &&
           locked.st_dev == named.st_dev && locked.st_ino == named.st_ino;
}

}

FileLock::FileLock(const std::filesystem::path& path, Missing missing)
{
    constexpr int kTries = 10; // each after somebody removed the file
    for (int i = 0; i < kTries && !isHeld(); ++i) {
        Descriptor file = openedFile(path, missing);
        if (file.number() < 0) return;
        const int code = lockWhole(file.number());
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
