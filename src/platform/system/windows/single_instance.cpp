#include "platform/system/process.h"

#include "platform/system/windows/user.h"
#include "platform/system/windows/wide_path.h"
#include "platform/system/windows/windows_api.h"

#include <algorithm>

namespace tolvek {

namespace {

// Seen from all of the user's sessions. It holds his identifier, because another user who
// had one of this name could lock him out.
std::wstring objectName(const std::string& name)
{
    std::wstring plain = wideText(name);
    std::ranges::replace(plain, L'\\', L'_');
    return LR"(Global\)" + plain + L'-' + userIdentifier();
}

}

// That the object exists is the lock; the system removes it with its last process. Without
// the object the locks on files remain.
void SingleInstance::takeForUser(const std::string& name)
{
    const HANDLE mutex = ::CreateMutexW(nullptr, FALSE, objectName(name).c_str());
    isTakenForUser_ = mutex && ::GetLastError() == ERROR_ALREADY_EXISTS;
    if (mutex) userLock_ = std::shared_ptr<void>(mutex, ::CloseHandle);
}

}
