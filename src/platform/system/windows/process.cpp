#include "platform/system/process.h"

#include "platform/system/windows/wide_path.h"
#include "platform/system/windows/windows_api.h"

#include <utility>

namespace tolvek {

namespace {

std::optional<std::filesystem::path>& windowsFolderOfTests()
{
    static std::optional<std::filesystem::path> folder;
    return folder;
}

}

// Not ExitProcess, which still calls the libraries.
void leaveProcess(int code)
{
    ::TerminateProcess(::GetCurrentProcess(), static_cast<UINT>(code));
    std::abort(); // not reached
}

std::filesystem::path windowsFolder()
{
    if (windowsFolderOfTests()) return *windowsFolderOfTests();
    wchar_t folder[MAX_PATH] = {};
    const UINT size = ::GetWindowsDirectoryW(folder, MAX_PATH);
    return size < MAX_PATH ? std::filesystem::path(folder) : std::filesystem::path();
}

void setWindowsFolder(std::filesystem::path folder)
{
    windowsFolderOfTests() = std::move(folder);
}

}
