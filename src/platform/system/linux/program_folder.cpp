#include "platform/system/files.h"
#include "platform/system/process.h"

#include <algorithm>
#include <cstdlib>
#include <unistd.h>

namespace tolvek {

namespace fs = std::filesystem;

namespace {

bool isProgram(const fs::path& path)
{
    return fileExists(path) && access(path.c_str(), X_OK) == 0;
}

// Like the shell: searches one folder after the other; an empty entry means the
// current folder.
std::optional<fs::path> foundInPath(std::string_view name)
{
    const char* variable = std::getenv("PATH");
    std::string_view rest = variable ? variable : "";
    for (;;) {
        const std::size_t end = rest.find(':');
        const std::string_view folder = rest.substr(0, end);
        const fs::path program = fs::path(folder.empty() ? "." : folder) / name;
        if (isProgram(program)) return program;
        if (end == std::string_view::npos) return std::nullopt;
        rest.remove_prefix(end + 1);
    }
}

std::optional<fs::path> startedProgram(std::string_view name)
{
    if (name.empty()) return std::nullopt;
    if (name.find('/') == std::string_view::npos) return foundInPath(name);
    return isProgram(name) ? std::optional(fs::path(name)) : std::nullopt;
}

// "x/.." may be removed from a path only if x isn't a link, so a path with ".." is
// resolved by the system.
fs::path tidyFolder(const fs::path& program)
{
    const bool climbs = std::find(program.begin(), program.end(), "..") != program.end();
    return climbs ? fs::canonical(program.parent_path()) : program.lexically_normal().parent_path();
}

}

std::optional<fs::path> installedProgram(std::string_view name)
{
    const auto found = foundInPath(name);
    return found ? std::optional(fs::absolute(*found)) : std::nullopt;
}

fs::path programFolder(const char* argv0)
{
    const auto started = startedProgram(argv0 ? argv0 : "");
    // The starting program may pass any name; if it isn't a program, ask the
    // system.
    const fs::path program = started ? fs::absolute(*started) : fs::read_symlink("/proc/self/exe");
    return tidyFolder(program);
}

}
