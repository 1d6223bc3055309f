#include "platform/system/windows/unlink.h"

#include "platform/system/windows/handle.h"
#include "platform/system/windows/wide_path.h"

namespace tolvek {

namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// FILE_DISPOSITION_INFO_EX, which the compiler's headers may lack.
struct Disposition {
    DWORD flags;
};
constexpr auto kDispositionClass = static_cast<FILE_INFO_BY_HANDLE_CLASS>(21);
constexpr DWORD kDelete = 1, kAtOnce = 2, kDespiteReadOnly = 0x10;

DWORD unlinkAtOnce(const std::wstring& path)
{
    const Handle file(::CreateFileW(path.c_str(), DELETE, kShareAll, nullptr, OPEN_EXISTING,
                                    FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
    if (!file) return ::GetLastError();
    Disposition gone{kDelete | kAtOnce | kDespiteReadOnly};
    const BOOL done =
        ::SetFileInformationByHandle(file.get(), kDispositionClass, &gone, sizeof gone);
    return done ? ERROR_SUCCESS : ::GetLastError();
}

DWORD unlinkInTime(const std::filesystem::path& path, const std::wstring& wide)
{
    WithoutReadOnlyMark unmarked(path);
    if (!::DeleteFileW(wide.c_str())) return ::GetLastError();
    unmarked.keepOff();
    return ERROR_SUCCESS;
}

bool isFolder(const std::wstring& path)
{
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

}

DWORD unlinkName(const std::filesystem::path& path)
{
    const std::wstring wide = widePath(path);
    if (isFolder(wide)) return ERROR_DIRECTORY;
    // Only newer systems, and not every file system, know the first way.
    if (unlinkAtOnce(wide) == ERROR_SUCCESS) return ERROR_SUCCESS;
    return despiteScanners([&] { return unlinkInTime(path, wide); });
}

WithoutReadOnlyMark::WithoutReadOnlyMark(const std::filesystem::path& path)
    : path_(widePath(path)), attributes_(::GetFileAttributesW(path_.c_str()))
{
    const bool marked = attributes_ != INVALID_FILE_ATTRIBUTES &&
                        (attributes_ & FILE_ATTRIBUTE_READONLY) != 0 &&
                        (attributes_ & FILE_ATTRIBUTE_DIRECTORY) == 0;
    if (marked) ::SetFileAttributesW(path_.c_str(), attributes_ & ~FILE_ATTRIBUTE_READONLY);
    if (!marked) attributes_ = INVALID_FILE_ATTRIBUTES;
}

WithoutReadOnlyMark::~WithoutReadOnlyMark()
{
    if (attributes_ != INVALID_FILE_ATTRIBUTES) ::SetFileAttributesW(path_.c_str(), attributes_);
}

}
