#include "platform/runtime/directory.h"

#include "platform/runtime/name_fold.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/runtime_error.h"
#include "platform/system/files.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace tolvek {

namespace {

// "*" matches any number of units, "?" exactly one. On a mismatch the last "*"
// takes one unit more.
bool fits(TextView name, TextView pattern)
{
    std::size_t at = 0, wanted = 0, star = TextView::npos, resume = 0;
    while (at < name.size()) {
        if (wanted < pattern.size() && pattern[wanted] == u'*') {
            star = wanted++;
            resume = at;
        } else if (wanted < pattern.size() &&
                   (pattern[wanted] == u'?' || pattern[wanted] == name[at])) {
            ++at;
            ++wanted;
        } else if (star != TextView::npos) {
            wanted = star + 1;
            at = ++resume;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of(u'*', wanted) == TextView::npos;
}

// ".*" at the end also matches a name without an extension.
bool fitsAsExtension(TextView name, TextView pattern)
{
    return pattern.ends_with(u".*") && name.find(u'.') == TextView::npos &&
           fits(name, pattern.substr(0, pattern.size() - 2));
}

struct Match {
    Text name;
    Path path;
    bool operator<(const Match& other) const { return name < other.name; }
};

std::vector<std::string> namesIn(const Path& folder)
{
    const Path listed = folder.empty() ? Path(".") : folder;
    // A missing folder is no error: nothing matches.
    if (!folderExists(listed)) return {};
    return asFileError([&] { return fileNames(listed); });
}

std::vector<Match> matchesIn(const Path& folder, TextView pattern)
{
    // Folding leaves the wildcard characters unchanged.
    const Text wanted = foldedName(pattern);
    std::vector<Match> matches;
    for (const std::string& bytes : namesIn(folder)) {
        const Text name = fromUtf8(bytes);
        const Text folded = foldedName(name);
        if (fits(folded, wanted) || fitsAsExtension(folded, wanted))
            matches.push_back({name, folder / Path(std::u8string(bytes.begin(), bytes.end()))});
    }
    std::sort(matches.begin(), matches.end());
    return matches;
}

std::vector<Match> matchingFiles(TextView pattern)
{
    const Path path = nativePath(pattern);
    const Text name = pathText(path.filename());
    if (name.empty()) return {};
    if (name.find_first_of(u"*?") != Text::npos)
        return matchesIn(existingPath(pathText(path.parent_path())), name);
    const Path found = existingPath(pattern);
    if (!fileExists(found)) return {};
    return {{pathText(nameOnDisk(found)), found}};
}

// On a system that doesn't distinguish case, both may be as written and yet one file.
bool isSameInAnotherCase(const Path& a, const Path& b)
{
    std::error_code none;
    return foldedName(pathText(a)) == foldedName(pathText(b)) &&
           std::filesystem::equivalent(a, b, none);
}

// A target that is the source itself in another case counts as free.
Path freeTarget(TextView to, const Path& source)
{
    Path target = targetPath(to);
    if (!entryExists(target)) return target;
    Path written = target.parent_path() / nativePath(to).filename();
    if (!isSameInAnotherCase(target, source) || written == source) throw RuntimeError(58);
    return written;
}

}

Text dir(TextView pattern)
{
    const std::vector<Match> matches = matchingFiles(pattern);
    return matches.empty() ? Text() : matches.front().name;
}

std::vector<Text> dirAll(TextView pattern)
{
    std::vector<Text> names;
    for (Match& match : matchingFiles(pattern))
        names.push_back(std::move(match.name));
    return names;
}

void kill(TextView pattern)
{
    const std::vector<Match> matches = matchingFiles(pattern);
    if (matches.empty()) throw RuntimeError(53);
    for (const Match& match : matches) {
        // On the classic platform the mode protects a file from deletion; the
        // system's own call ignores it.
        if (isReadOnly(match.path)) throw RuntimeError(75);
        asFileError([&] { removeFile(match.path); });
    }
}

void rename(TextView from, TextView to)
{
    const Path source = existingPath(from);
    if (!entryExists(source)) throw RuntimeError(53);
    const Path target = freeTarget(to, source);
    if (target.has_parent_path() && !folderExists(target.parent_path())) throw RuntimeError(76);
    asFileError([&] { renameFile(source, target); });
}

int getAttr(TextView text)
{
    const Path path = existingPath(text);
    const auto status = asFileError([&] { return std::filesystem::status(path); });
    if (std::filesystem::exists(status)) return is_directory(status) ? vbDirectory : 0;
    const Path above = existingPath(pathText(path.parent_path()));
    throw RuntimeError(folderExists(above) ? 53 : 76);
}

bool copyFile(TextView from, TextView to, bool failIfExists)
{
    try {
        copyFileContents(existingPath(from), targetPath(to), failIfExists);
        return true;
    } catch (const std::system_error&) {
        return false; // the classic platform's call has no other answer
    }
}

}
