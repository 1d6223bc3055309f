#include "platform/system/linux/process_folder.h"

#include "platform/system/files.h"
#include "platform/system/linux/emulated_path.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace tolvek {

namespace fs = std::filesystem;

namespace {

// The emulation layer's own programs.
constexpr std::string_view kLoaders[] = {"wine", "wine64", "wine-preloader", "wine64-preloader"};

// Empty if the process has ended or belongs to another user.
std::string contents(const fs::path& path)
{
    try {
        return readFile(path);
    } catch (const std::system_error&) {
        return {};
    }
}

std::vector<std::string> partsOf(const std::string& list)
{
    std::vector<std::string> parts;
    for (std::size_t begin = 0; begin < list.size();) {
        const std::size_t end = std::min(list.find('\0', begin), list.size());
        parts.push_back(list.substr(begin, end - begin));
        begin = end + 1;
    }
    return parts;
}

std::string variableOf(const fs::path& process, const std::string& name)
{
    for (const std::string& variable : partsOf(contents(process / "environ")))
        if (variable.starts_with(name + '=')) return variable.substr(name.size() + 1);
    return {};
}

// The folder in which the emulation layer keeps the drives for that process.
fs::path environmentOf(const fs::path& process)
{
    const std::string chosen = variableOf(process, "WINEPREFIX");
    return chosen.empty() ? fs::path(variableOf(process, "HOME")) / ".wine" : fs::path(chosen);
}

bool isLoader(const fs::path& program)
{
    return std::ranges::find(kLoaders, program.filename().string()) != std::end(kLoaders);
}

std::optional<fs::path> linkTarget(const fs::path& link)
{
    std::error_code unreadable;
    fs::path target = fs::read_symlink(link, unreadable);
    return unreadable ? std::nullopt : std::optional(std::move(target));
}

// The first word of the command line that isn't the loader itself. The loader
// accepts a host path as well as a path with a drive.
std::optional<fs::path> emulatedProgram(const fs::path& process)
{
    for (const std::string& word : partsOf(contents(process / "cmdline"))) {
        if (isDrivePath(word)) return hostPath(word, environmentOf(process));
        if (word.empty() || isLoader(word)) continue;
        const auto folder = linkTarget(process / "cwd");
        return folder ? std::optional((*folder / word).lexically_normal()) : std::nullopt;
    }
    return std::nullopt;
}

// The system marks a program whose file has been deleted or replaced since its
// start.
fs::path withoutMark(const fs::path& program)
{
    constexpr std::string_view mark = " (deleted)";
    const std::string name = program.string();
    // A file's real name may end this way too.
    if (!name.ends_with(mark) || entryExists(program)) return program;
    return name.substr(0, name.size() - mark.size());
}

std::optional<fs::path> programOf(const fs::path& process)
{
    const auto program = linkTarget(process / "exe");
    if (!program) return std::nullopt;
    const std::string line = contents(process / "cmdline");
    // The loader may show the emulated program's own path as the first word.
    const bool emulated = isLoader(*program) || isDrivePath(line.substr(0, line.find('\0')));
    return emulated ? emulatedProgram(process) : withoutMark(*program);
}

std::optional<std::int32_t> number(std::string_view digits)
{
    std::int32_t value = 0;
    const char* end = digits.data() + digits.size();
    const auto [stop, failure] = std::from_chars(digits.data(), end, value);
    return failure == std::errc() && stop == end ? std::optional(value) : std::nullopt;
}

// The name in brackets may contain anything, so the search is for the last ") ".
// The state and the parent's id follow.
std::int32_t parentOf(const fs::path& process)
{
    const std::string state = contents(process / "stat");
    const std::size_t behindName = state.rfind(") ");
    if (behindName == std::string::npos) return 0;
    const std::string_view rest = std::string_view(state).substr(behindName + 4);
    return number(rest.substr(0, rest.find(' '))).value_or(0);
}

}

std::vector<RunningProgram> runningProgramsIn(const fs::path& processFolder)
{
    std::vector<RunningProgram> running;
    for (const std::string& name : folderNames(processFolder))
        if (const auto id = number(name))
            if (auto program = programOf(processFolder / name))
                running.push_back({*id, std::move(*program)});
    std::ranges::sort(running, {}, &RunningProgram::processId);
    return running;
}

std::vector<std::int32_t> processFamily(std::int32_t processId, const fs::path& processFolder)
{
    std::multimap<std::int32_t, std::int32_t> children;
    for (const std::string& name : folderNames(processFolder))
        if (const auto id = number(name)) children.emplace(parentOf(processFolder / name), *id);
    std::vector<std::int32_t> family{processId};
    for (std::size_t at = 0; at < family.size(); ++at)
        for (auto [child, end] = children.equal_range(family[at]); child != end; ++child)
            // The listing isn't a snapshot: a reused id could make a cycle.
            if (std::ranges::find(family, child->second) == family.end())
                family.push_back(child->second);
    return family;
}

std::vector<RunningProgram> runningPrograms()
{
    return runningProgramsIn("/proc");
}

}
