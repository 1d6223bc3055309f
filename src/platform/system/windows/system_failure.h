// Turns the system's error codes into exceptions.
#pragma once
#include "platform/system/windows/windows_api.h"

#include <filesystem>
#include <system_error>

namespace tolvek {

// Like std::system_category's, and right where that knows no portable condition for
// the code or the wrong one. A full share of a disk is a full disk.
std::error_code systemError(DWORD code);

[[noreturn]] void throwSystemError(DWORD code, const std::filesystem::path& path);
[[noreturn]] void throwSystemError(std::errc code, const std::filesystem::path& path);

// A result of FALSE is thrown as a failure on `path`.
void systemCall(const std::filesystem::path& path, BOOL done);

}
