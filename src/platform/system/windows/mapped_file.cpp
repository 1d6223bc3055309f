#include "platform/system/mapped_file.h"

#include "platform/system/files.h"
#include "platform/system/windows/handle.h"
#include "platform/system/windows/wide_path.h"

namespace tolvek {

MappedFile::MappedFile(const std::filesystem::path& path)
{
    probeFile(FileOperation::Open, path);
    constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const Handle file(::CreateFileW(widePath(path).c_str(), GENERIC_READ, shareAll, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    if (!file) throwSystemError(::GetLastError(), path);
    BY_HANDLE_FILE_INFORMATION about{};
    systemCall(path, ::GetFileInformationByHandle(file.get(), &about));
    if (about.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
        throwSystemError(std::errc::invalid_argument, path);
    size_ = static_cast<std::size_t>(std::uint64_t{about.nFileSizeHigh} << 32 | about.nFileSizeLow);
    if (size_ == 0) return; // the system refuses to map an empty file
    const Handle mapping(::CreateFileMappingW(file.get(), nullptr, PAGE_READONLY, 0, 0, nullptr));
    if (!mapping) throwSystemError(::GetLastError(), path);
    bytes_ = ::MapViewOfFile(mapping.get(), FILE_MAP_READ, 0, 0, 0);
    if (!bytes_) throwSystemError(::GetLastError(), path);
}

MappedFile::~MappedFile()
{
    if (bytes_) ::UnmapViewOfFile(bytes_);
}

// Unlocking pages that aren't locked takes them out of the process's memory.
void MappedFile::release() const
{
    if (bytes_) ::VirtualUnlock(bytes_, size_);
}

}
