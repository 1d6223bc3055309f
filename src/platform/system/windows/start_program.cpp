#include "platform/system/process.h"
#include "platform/system/windows/command_line.h"
#include "platform/system/windows/handle.h"
#include "platform/system/windows/wide_path.h"

#include <shellapi.h>

namespace tolvek {

namespace {

constexpr DWORD kElevationRequired = 740; // ERROR_ELEVATION_REQUIRED

// A program that wants an administrator's rights is started by the shell, which asks the
// user for them.
std::int32_t startedByShell(const std::filesystem::path& program, const std::wstring& arguments)
{
    const std::wstring file = widePath(program);
    SHELLEXECUTEINFOW about{};
    about.cbSize = sizeof about;
    about.fMask = SEE_MASK_NOCLOSEPROCESS | SEE_MASK_FLAG_NO_UI;
    about.lpFile = file.c_str();
    about.lpParameters = arguments.c_str();
    about.nShow = SW_SHOWNORMAL;
    systemCall(program, ::ShellExecuteExW(&about));
    const Handle process(about.hProcess);
    return process ? static_cast<std::int32_t>(::GetProcessId(process.get())) : 0;
}

std::wstring withoutProgram(const std::wstring& line, const std::filesystem::path& program)
{
    return line.substr(std::min(line.size(), program.native().size() + 3));
}

}

std::int32_t startProgram(const std::filesystem::path& program,
                          const std::vector<std::string>& arguments)
{
    std::wstring line = commandLine(program, arguments);
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION made{};
    // No handle is inherited, so no lock or pipe stays open through the program.
    if (::CreateProcessW(widePath(program).c_str(), line.data(), nullptr, nullptr, FALSE,
                         CREATE_NEW_PROCESS_GROUP, nullptr, nullptr, &start, &made)) {
        const Handle thread(made.hThread), process(made.hProcess);
        return static_cast<std::int32_t>(made.dwProcessId);
    }
    if (::GetLastError() != kElevationRequired) throwSystemError(::GetLastError(), program);
    return startedByShell(program, withoutProgram(line, program));
}

}
