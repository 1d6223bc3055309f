#include "platform/system/volumes.h"
#include "platform/system/files.h"
#include "platform/system/linux/mount_table.h"
#include "platform/system/test_hooks.h"

#include <algorithm>
#include <cstdlib>
#include <system_error>
#include <utility>

namespace tolvek {

namespace {

std::vector<std::string>& givenFolders()
{
    static std::vector<std::string> folders;
    return folders;
}

std::string variable(const char* name)
{
    const char* value = std::getenv(name);
    return value ? value : "";
}

std::string homeFolder()
{
    std::string home = variable("HOME");
    while (home.size() > 1 && home.back() == '/')
        home.pop_back();
    return home;
}

// A Windows program's files are there. The folder is hidden, so a directory list
// doesn't show it.
std::string windowsDrive()
{
    const std::string environment = variable("WINEPREFIX");
    return (environment.empty() ? homeFolder() + "/.wine" : environment) + "/drive_c";
}

// If the mounts can't be read, the root is still listed.
std::string mountInfo()
{
    try {
        return readFile("/proc/self/mountinfo");
    } catch (const std::system_error&) {
        return {};
    }
}

void add(std::vector<std::string>& folders, std::string folder)
{
    if (std::find(folders.begin(), folders.end(), folder) == folders.end())
        folders.push_back(std::move(folder));
}

}

std::vector<std::string> volumeFolders()
{
    if (!givenFolders().empty()) return givenFolders();
    std::vector<std::string> folders{"/"};
    for (std::string own : {homeFolder(), windowsDrive()})
        // The environment variables may be unset or relative.
        if (own.starts_with('/') && folderExists(own)) add(folders, std::move(own));
    for (std::string& mounted : mountedVolumes(mountInfo()))
        add(folders, std::move(mounted));
    return folders;
}

void hooks::setVolumeFolders(std::vector<std::string> folders)
{
    givenFolders() = std::move(folders);
}

}
