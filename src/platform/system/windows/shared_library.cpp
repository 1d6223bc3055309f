#include "platform/system/files.h"
#include "platform/system/process.h"
#include "platform/system/windows/system_failure.h"
#include "platform/system/windows/wide_path.h"

namespace tolvek {

SharedLibrary::SharedLibrary(const std::filesystem::path& path)
{
    if (!fileExists(path)) throwSystemError(std::errc::no_such_file_or_directory, path);
    // Absolute, because a bare name is searched for in the system's folders. The library's
    // own folder is searched for what it needs.
    handle_ = ::LoadLibraryExW(widePath(std::filesystem::absolute(path)).c_str(), nullptr,
                               LOAD_WITH_ALTERED_SEARCH_PATH);
    if (!handle_) throwSystemError(std::errc::executable_format_error, path);
}

SharedLibrary::~SharedLibrary()
{
    ::FreeLibrary(static_cast<HMODULE>(handle_));
}

void* SharedLibrary::symbol(const char* name) const
{
    const FARPROC address = ::GetProcAddress(static_cast<HMODULE>(handle_), name);
    if (!address) throwSystemError(std::errc::function_not_supported, name);
    return reinterpret_cast<void*>(address);
}

std::string SharedLibrary::fileName(const std::string& name)
{
    return name + ".dll";
}

}
