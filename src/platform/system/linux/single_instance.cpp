#include "platform/system/process.h"

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

}

void SingleInstance::takeForUser(const std::string& name)
{
    if (const fs::path session = sessionFolder(); !session.empty()) take(session / lockName(name));
}

}
