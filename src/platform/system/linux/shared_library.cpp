#include "platform/system/files.h"
#include "platform/system/process.h"

#include <dlfcn.h>
#include <system_error>

namespace tolvek {

namespace {

[[noreturn]] void throwLibraryError(std::errc code, const std::string& name)
{
    const char* reason = dlerror();
    throw std::system_error(std::make_error_code(code), reason ? reason : name);
}

}

SharedLibrary::SharedLibrary(const std::filesystem::path& path)
{
    if (!fileExists(path)) throwLibraryError(std::errc::no_such_file_or_directory, path.string());
    // dlopen searches the system's folders for a bare name, so the path must be
    // absolute.
    // RTLD_NOW: an unresolved symbol is reported here and not at the first call.
    handle_ = dlopen(std::filesystem::absolute(path).c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle_) throwLibraryError(std::errc::executable_format_error, path.string());
}

SharedLibrary::~SharedLibrary()
{
    dlclose(handle_);
}

void* SharedLibrary::symbol(const char* name) const
{
    void* address = dlsym(handle_, name);
    if (!address) throwLibraryError(std::errc::function_not_supported, name);
    return address;
}

std::string SharedLibrary::fileName(const std::string& name)
{
    return "lib" + name + ".so";
}

}
