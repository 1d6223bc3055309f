#include "platform/system/process.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <optional>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tolvek {

namespace fs = std::filesystem;

namespace {

// The folder must be the user's own: in a folder that all may write, another
// user could hold the lock for ever or lead it elsewhere by a link.
bool isOwnFolder(const fs::path& folder)
{
    struct stat status {};
    return lstat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode) &&
           status.st_uid == geteuid();
}

std::optional<fs::path> sessionFolder()
{
    const char* variable = std::getenv("XDG_RUNTIME_DIR");
    if (!variable || !*variable || !isOwnFolder(variable)) return std::nullopt;
    return fs::path(variable);
}

std::optional<fs::path> tempFolderOfUser()
{
    std::error_code none;
    const fs::path temp = fs::temp_directory_path(none);
    if (temp.empty()) return std::nullopt;
    const fs::path folder = temp / ("tolvek-" + std::to_string(geteuid()));
    mkdir(folder.c_str(), 0700); // present already is as good; the next line judges
    return isOwnFolder(folder) ? std::optional(folder) : std::nullopt;
}

int openLock(const fs::path& folder, std::string name)
{
    for (char& character : name)
        character = character == '/' ? '_' : character;
    const fs::path path = folder / (name + ".lock");
    // Not handed on to programs that are started: they would hold the lock
    // beyond this process.
    return open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
}

}

SingleInstance::SingleInstance(const std::string& name)
{
    auto folder = sessionFolder();
    if (!folder) folder = tempFolderOfUser();
    if (!folder) return;
    lock_ = openLock(*folder, name);
    if (lock_ >= 0) first_ = flock(lock_, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

SingleInstance::~SingleInstance()
{
    if (lock_ >= 0) close(lock_);
}

}
