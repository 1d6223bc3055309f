// Turns the system's error codes into exceptions.
#pragma once
#include "platform/system/files.h"

#include <cerrno>
#include <filesystem>
#include <string>
#include <system_error>

namespace tolvek {

// The user's share of a disk that is used up is a full disk to him.
[[noreturn]] inline void throwSystemError(int code, const std::filesystem::path& path)
{
    throw std::system_error(isFullDisk(code) ? ENOSPC : code, std::system_category(),
                            path.string());
}

// Repeats a call that a signal interrupted. A result of -1 is thrown as a failure
// on `path`.
template <class Call> auto systemCall(const std::filesystem::path& path, Call call)
{
    for (;;) {
        const auto result = call();
        if (result >= 0) return result;
        if (errno != EINTR) throwSystemError(errno, path);
    }
}

}
