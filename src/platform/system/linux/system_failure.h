// How this folder turns the system's answers into failures.
#pragma once
#include <cerrno>
#include <filesystem>
#include <string>
#include <system_error>

namespace tolvek {

[[noreturn]] inline void throwSystemError(int code, const std::filesystem::path& path)
{
    throw std::system_error(code, std::system_category(), path.string());
}

// Repeats a call that a signal cut off; -1 becomes a failure on `path`.
template <class Call> auto systemCall(const std::filesystem::path& path, Call call)
{
    for (;;) {
        const auto result = call();
        if (result >= 0) return result;
        if (errno != EINTR) throwSystemError(errno, path);
    }
}

}
