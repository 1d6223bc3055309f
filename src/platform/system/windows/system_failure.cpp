#include "platform/system/windows/system_failure.h"

#include "platform/system/files.h"
#include "platform/system/windows/wide_path.h"

#include <algorithm>
#include <iterator>

namespace tolvek {

namespace {

struct Meaning {
    DWORD code;
    std::errc condition;
};

constexpr DWORD kVirusInfected = 225; // ERROR_VIRUS_INFECTED

// The library knows no condition for these, or a misleading one: a damaged file isn't
// one that exists already.
constexpr Meaning kMeanings[] = {
    {ERROR_INVALID_FUNCTION, std::errc::operation_not_supported}, // a link on FAT
    {ERROR_CRC, std::errc::io_error},
    {ERROR_NOT_READY, std::errc::no_such_device},
    {ERROR_WRITE_PROTECT, std::errc::read_only_file_system},
    {ERROR_GEN_FAILURE, std::errc::io_error},
    {ERROR_NOT_SUPPORTED, std::errc::operation_not_supported},
    {ERROR_BAD_NETPATH, std::errc::no_such_file_or_directory},
    {ERROR_DEV_NOT_EXIST, std::errc::no_such_device},
    {ERROR_NETNAME_DELETED, std::errc::io_error},
    {ERROR_BAD_NET_NAME, std::errc::no_such_file_or_directory},
    {ERROR_INVALID_NAME, std::errc::no_such_file_or_directory},
    {ERROR_BAD_EXE_FORMAT, std::errc::executable_format_error},
    {ERROR_EXE_MACHINE_TYPE_MISMATCH, std::errc::executable_format_error},
    {kVirusInfected, std::errc::permission_denied},
    {ERROR_DELETE_PENDING, std::errc::device_or_resource_busy},
    {ERROR_UNABLE_TO_REMOVE_REPLACED, std::errc::device_or_resource_busy},
    {ERROR_USER_MAPPED_FILE, std::errc::device_or_resource_busy},
    {ERROR_IO_DEVICE, std::errc::io_error},
    {ERROR_FILE_CORRUPT, std::errc::io_error},
    {ERROR_DISK_CORRUPT, std::errc::io_error},
};

// The system doesn't tell a missing folder from a file in a folder's place.
bool leadsThroughFile(std::filesystem::path path)
{
    while (path.has_relative_path()) {
        path = path.parent_path();
        const DWORD attributes = ::GetFileAttributesW(widePath(path).c_str());
        if (attributes != INVALID_FILE_ATTRIBUTES)
            return (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
    }
    return false;
}

}

std::error_code systemError(DWORD code)
{
    const int number = static_cast<int>(code);
    if (isFullDisk(number)) return std::make_error_code(std::errc::no_space_on_device);
    const auto* found = std::ranges::find(kMeanings, code, &Meaning::code);
    if (found != std::end(kMeanings)) return std::make_error_code(found->condition);
    return {number, std::system_category()};
}

void throwSystemError(DWORD code, const std::filesystem::path& path)
{
    if (code == ERROR_PATH_NOT_FOUND && leadsThroughFile(path))
        throwSystemError(std::errc::not_a_directory, path);
    throw std::system_error(systemError(code), path.string());
}

void throwSystemError(std::errc code, const std::filesystem::path& path)
{
    throw std::system_error(std::make_error_code(code), path.string());
}

void systemCall(const std::filesystem::path& path, BOOL done)
{
    if (!done) throwSystemError(::GetLastError(), path);
}

}
