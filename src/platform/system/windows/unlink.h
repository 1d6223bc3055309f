// Removes a name as other systems do.
#pragma once
#include "platform/system/windows/windows_api.h"

#include <filesystem>

namespace tolvek {

// The name of a file, whatever its read-only mark says. Where the file system can, it
// is free at once even if somebody has the file open; elsewhere when the last one
// closes it, and not at all while somebody has it open who doesn't share it. Returns
// the system's code.
DWORD unlinkName(const std::filesystem::path& path);

// Takes a file's read-only mark away during its lifetime, because the system lets
// nobody rename over, remove or flush a marked file.
class WithoutReadOnlyMark {
public:
    explicit WithoutReadOnlyMark(const std::filesystem::path& path);
    ~WithoutReadOnlyMark(); // marks what has the name now, unless keepOff() was called
    WithoutReadOnlyMark(const WithoutReadOnlyMark&) = delete;
    WithoutReadOnlyMark& operator=(const WithoutReadOnlyMark&) = delete;
    void keepOff() { attributes_ = INVALID_FILE_ATTRIBUTES; }

private:
    std::wstring path_;
    DWORD attributes_; // as they were; invalid if there is nothing to restore
};

// Repeats a call that virus scanners and indexers make fail for a moment. The call
// returns the system's code, and so does this, after a second at the latest.
template <class Call> DWORD despiteScanners(Call call)
{
    constexpr int kTries = 20;
    constexpr DWORD kNap = 50; // milliseconds
    for (int i = 1;; ++i) {
        const DWORD failure = call();
        const bool mayPass = failure == ERROR_SHARING_VIOLATION || failure == ERROR_ACCESS_DENIED ||
                             failure == ERROR_DELETE_PENDING || failure == ERROR_USER_MAPPED_FILE;
        if (!mayPass || i == kTries) return failure;
        ::Sleep(kNap);
    }
}

}
