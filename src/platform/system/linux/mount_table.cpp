#include "platform/system/linux/mount_table.h"

#include <algorithm>
#include <optional>
#include <set>
#include <sstream>

namespace tolvek {

namespace {

struct Mount {
    std::string device; // major:minor, "8:1" for example
    std::string root;   // which folder of the volume is shown
    std::string folder;
    std::string type;
    std::string source;
};

bool isOctal(char c)
{
    return c >= '0' && c <= '7';
}

// Decodes spaces, TABs, line ends and backslashes, which are written as "\" and
// three octal digits.
std::string unescaped(const std::string& field)
{
    std::string plain;
    for (std::size_t i = 0; i < field.size(); ++i) {
        const bool escape = field[i] == '\\' && i + 3 < field.size() &&
                            std::all_of(&field[i + 1], &field[i + 1] + 3, isOctal);
        plain +=
            escape ? static_cast<char>(std::stoi(field.substr(i + 1, 3), nullptr, 8)) : field[i];
        if (escape) i += 3;
    }
    return plain;
}

// "id parent device root folder options [tags] - type source options"
std::optional<Mount> mountOf(const std::string& line)
{
    std::istringstream fields(line);
    std::string skipped;
    Mount mount;
    fields >> skipped >> skipped >> mount.device >> mount.root >> mount.folder;
    // The number of tags varies; "-" ends them.
    while (fields >> skipped && skipped != "-") {
    }
    if (!(fields >> mount.type >> mount.source)) return std::nullopt;
    mount.folder = unescaped(mount.folder);
    mount.source = unescaped(mount.source);
    return mount;
}

bool liesIn(std::string_view folder, std::string_view above)
{
    return folder.starts_with(above) &&
           (folder.size() == above.size() || folder[above.size()] == '/');
}

bool inSystemFolder(std::string_view folder)
{
    if (liesIn(folder, "/run/media")) return false; // where desktops mount removable media
    constexpr std::string_view kSystem[] = {"/boot", "/dev", "/etc", "/proc", "/run",
                                            "/snap", "/sys", "/usr", "/var"};
    return std::any_of(std::begin(kSystem), std::end(kSystem),
                       [&](std::string_view above) { return liesIn(folder, above); });
}

bool holdsUserFiles(const Mount& mount)
{
    constexpr std::string_view kOverTheNet[] = {"9p",   "cifs",   "nfs",      "nfs4",
                                                "smb3", "vboxsf", "virtiofs", "zfs"};
    if (mount.type == "squashfs") return false; // a packed program
    return mount.source.starts_with("/dev/") || mount.type.starts_with("fuse.") ||
           std::find(std::begin(kOverTheNet), std::end(kOverTheNet), mount.type) !=
               std::end(kOverTheNet);
}

// Usually only the mount of a whole volume counts. btrfs volumes are divided into
// subvolumes, which have a root of their own.
bool isWhole(const Mount& mount)
{
    return mount.root == "/" || mount.type == "btrfs";
}

}

std::vector<std::string> mountedVolumes(std::string_view mountInfo)
{
    std::istringstream lines{std::string(mountInfo)};
    std::set<std::string> devices, folders;
    for (std::string line; std::getline(lines, line);) {
        const auto mount = mountOf(line);
        if (!mount || !isWhole(*mount) || !holdsUserFiles(*mount)) continue;
        const bool first = devices.insert(mount->device).second;
        if (first && mount->folder != "/" && !inSystemFolder(mount->folder))
            folders.insert(mount->folder);
    }
    return {folders.begin(), folders.end()};
}

}
