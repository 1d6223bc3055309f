#include "platform/system/child_start.h"

#include "platform/system/windows/windows_api.h"

#include <csignal>
#include <cstdlib>
#include <string>

namespace tolvek {

namespace {

constexpr UINT kAborted = 0xC0000409; // as the system's own guard against overruns ends one

[[noreturn]] void endAs(UINT code)
{
    ::TerminateProcess(::GetCurrentProcess(), code);
    std::_Exit(1); // not reached
}

void endAborted(int)
{
    endAs(kAborted);
}

LONG WINAPI endCrashed(EXCEPTION_POINTERS* crash)
{
    endAs(crash->ExceptionRecord->ExceptionCode);
}

}

void setOnlyVariable(const char* name, const char* value)
{
    while (_environ && *_environ) {
        const std::string variable = *_environ;
        // An empty value removes a variable.
        if (_putenv_s(variable.substr(0, variable.find('=', 1)).c_str(), "") != 0) break;
    }
    _putenv_s(name, value);
}

// The C library's own abort() would end with a plain exit code.
void showCrashes()
{
    ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
    ::SetUnhandledExceptionFilter(endCrashed);
    std::signal(SIGABRT, endAborted);
}

}
