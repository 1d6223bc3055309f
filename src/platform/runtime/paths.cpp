#include "platform/runtime/paths.h"

#include "platform/runtime/name_fold.h"
#include "platform/system/files.h"

#include <algorithm>
#include <optional>
#include <system_error>
#include <vector>

namespace tolvek {

namespace {

constexpr char16_t kSeparator = static_cast<char16_t>(Path::preferred_separator);

bool isSeparator(char16_t unit)
{
    return unit == u'/' || unit == kSeparator;
}

Path fromName(const std::string& name)
{
    return Path(std::u8string(name.begin(), name.end()));
}

// The names in the folder that differ from `name` only in case or composition, in a
// fixed order. Empty if the folder can't be listed: the path then stays as written,
// and opening it reports the failure.
std::vector<Path> likeNamed(const Path& folder, const Path& name)
{
    std::vector<std::string> names;
    try {
        names = entryNames(folder.empty() ? Path(".") : folder);
    } catch (const std::system_error&) {
        return {};
    }
    std::sort(names.begin(), names.end());
    const Text wanted = foldedName(pathText(name));
    std::vector<Path> alike;
    for (const std::string& candidate : names)
        if (foldedName(fromUtf8(candidate)) == wanted) alike.push_back(fromName(candidate));
    return alike;
}

using Component = Path::const_iterator;

// An exact folder name is tried first, but a similarly named folder is used if only
// that one contains the rest of the path.
std::optional<Path> findBelow(const Path& folder, Component component, Component end)
{
    if (component == end) return folder;
    const Component next = std::next(component);
    const Path exact = folder / *component;
    if (entryExists(exact))
        if (auto found = findBelow(exact, next, end)) return found;
    for (const Path& name : likeNamed(folder, *component))
        if (entryExists(folder / name))
            if (auto found = findBelow(folder / name, next, end)) return found;
    return std::nullopt;
}

Text& startFolder()
{
    static Text folder;
    return folder;
}

}

Text joinPath(TextView folder, TextView name)
{
    while (!name.empty() && isSeparator(name.front()))
        name.remove_prefix(1);
    Text joined(folder);
    if (joined.empty() || !isSeparator(joined.back())) joined += kSeparator;
    return joined += name;
}

Path nativePath(TextView path)
{
    const std::string bytes = toUtf8(path);
    return Path(std::u8string(bytes.begin(), bytes.end()));
}

Path existingPath(TextView text)
{
    Path path = nativePath(text);
    if (path.empty() || entryExists(path)) return path;
    const Path relative = path.relative_path();
    return findBelow(path.root_path(), relative.begin(), relative.end()).value_or(path);
}

Path targetPath(TextView text)
{
    Path found = existingPath(text);
    if (entryExists(found) || !found.has_parent_path()) return found;
    return existingPath(pathText(found.parent_path())) / found.filename();
}

Text pathText(const Path& path)
{
    const std::u8string bytes = path.u8string();
    return fromUtf8(std::string(bytes.begin(), bytes.end()));
}

const Text& appPath()
{
    return startFolder();
}

void setAppPath(TextView folder)
{
    // The root keeps its separator.
    while (folder.size() > 1 && isSeparator(folder.back()))
        folder.remove_suffix(1);
    startFolder() = Text(folder);
}

}
