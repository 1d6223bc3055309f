#include "platform/system/linux/emulated_path.h"

#include "platform/system/files.h"

#include <algorithm>
#include <string>
#include <system_error>

namespace tolvek {

namespace fs = std::filesystem;

namespace {

char lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// ASCII letters only; other letters must match exactly.
bool sameName(std::string_view a, std::string_view b)
{
    return std::ranges::equal(a, b, {}, lower, lower);
}

std::string_view withoutMark(std::string_view path)
{
    for (const std::string_view mark : {"\\\\?\\", "\\??\\"})
        if (path.starts_with(mark)) return path.substr(mark.size());
    return path;
}

std::vector<std::string> namesIn(const fs::path& folder)
{
    try {
        return entryNames(folder);
    } catch (const std::system_error&) {
        return {}; // a folder that may be entered but not listed
    }
}

fs::path entryNamed(const fs::path& folder, std::string_view name)
{
    if (entryExists(folder / name)) return folder / name;
    for (const std::string& entry : namesIn(folder))
        if (sameName(entry, name)) return folder / entry;
    return folder / name;
}

// Removes the next name and its separator from `rest` and returns the name.
std::string_view takeName(std::string_view& rest)
{
    const std::size_t end = std::min(rest.find_first_of("\\/"), rest.size());
    const std::string_view name = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return name;
}

std::optional<fs::path> driveFolder(char letter, const fs::path& environment)
{
    std::error_code missing;
    const std::string link{lower(letter), ':'};
    fs::path folder = fs::canonical(environment / "dosdevices" / link, missing);
    return missing ? std::nullopt : std::optional(std::move(folder));
}

}

bool isDrivePath(std::string_view path)
{
    path = withoutMark(path);
    return path.size() > 2 && lower(path[0]) >= 'a' && lower(path[0]) <= 'z' && path[1] == ':' &&
           (path[2] == '\\' || path[2] == '/');
}

std::optional<fs::path> hostPath(std::string_view path, const fs::path& environment)
{
    if (!isDrivePath(path)) return std::nullopt;
    path = withoutMark(path);
    std::optional<fs::path> found = driveFolder(path[0], environment);
    // 3: the length of "C:\".
    for (std::string_view rest = path.substr(3); found && !rest.empty();) {
        const std::string_view name = takeName(rest);
        if (name == "..")
            found = found->parent_path();
        else if (!name.empty() && name != ".")
            found = entryNamed(*found, name);
    }
    return found;
}

}
