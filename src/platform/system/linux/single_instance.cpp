#include "platform/system/process.h"

#include <algorithm>
#include <cstdlib>
#include <sys/stat.h>
#include <unistd.h>

namespace tolvek {

namespace fs = std::filesystem;

namespace {

// The folder must belong to this user, and nobody else may write to it: another
// user could hold the lock for ever or redirect it with a link.
bool isOwnFolder(const fs::path& folder)
{
    struct stat status {};
    // lstat: a link to a folder isn't accepted.
    return lstat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode) &&
           status.st_uid == geteuid() && (status.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

// Empty without a session, in a batch job for example; then only the lock in the
// program's folder remains. No other place is guaranteed to be the user's own.
fs::path sessionFolder()
{
    const char* variable = std::getenv("XDG_RUNTIME_DIR");
    return variable && *variable && isOwnFolder(variable) ? fs::path(variable) : fs::path();
}

std::string lockName(std::string name)
{
    for (char& character : name)
        character = character == '/' ? '_' : character;
    return name + ".lock";
}

}

SingleInstance::SingleInstance(const std::string& name, const fs::path& home,
                               const fs::path& archive)
{
    if (const fs::path session = sessionFolder(); !session.empty()) take(session / lockName(name));
    take(home / lockName(name));
    if (!archive.empty()) take(fs::path(archive).replace_extension(".lock"));
}

// A second lock of one file would be refused because of the first.
void SingleInstance::take(const fs::path& file)
{
    std::error_code none;
    for (const fs::path& taken : files_)
        if (fs::equivalent(taken, file, none)) return;
    files_.push_back(file);
    locks_.emplace_back(file);
}

bool SingleInstance::isFirst() const
{
    return std::ranges::none_of(locks_, &FileLock::isHeldElsewhere);
}

}
