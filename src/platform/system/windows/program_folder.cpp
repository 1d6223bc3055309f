#include "platform/system/files.h"
#include "platform/system/process.h"
#include "platform/system/windows/system_failure.h"
#include "platform/system/windows/wide_path.h"

namespace tolvek {

namespace fs = std::filesystem;

namespace {

std::wstring searchPath()
{
    const DWORD size = ::GetEnvironmentVariableW(L"PATH", nullptr, 0);
    std::wstring folders(size, L'\0');
    folders.resize(::GetEnvironmentVariableW(L"PATH", folders.data(), size));
    return folders;
}

fs::path programName(std::string_view name)
{
    fs::path file = wideText(name);
    if (!file.has_extension()) file += L".exe";
    return file;
}

}

// One folder of the search path after the other. The system's own search would begin in
// the current folder, where anybody may have put a program.
std::optional<fs::path> installedProgram(std::string_view name)
{
    if (name.empty()) return std::nullopt;
    const std::wstring folders = searchPath();
    for (std::size_t begin = 0; begin <= folders.size();) {
        const std::size_t end = std::min(folders.find(L';', begin), folders.size());
        const fs::path folder(folders.substr(begin, end - begin));
        if (folder.is_absolute() && fileExists(folder / programName(name)))
            return folder / programName(name);
        begin = end + 1;
    }
    return std::nullopt;
}

// The system knows the path by which the program was started, a link's too.
fs::path programFolder(const char*)
{
    std::wstring name(MAX_PATH, L'\0');
    for (;;) {
        const DWORD size =
            ::GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size()));
        if (size == 0) throwSystemError(::GetLastError(), {});
        if (size < name.size()) return fs::path(name.substr(0, size)).parent_path();
        name.resize(name.size() * 2);
    }
}

}
