#include "platform/system/private_folder.h"

#include "platform/system/files.h"
#include "platform/system/windows/system_failure.h"
#include "platform/system/windows/user.h"
#include "platform/system/windows/wide_path.h"

#include <sddl.h>

#include <random>

namespace tolvek {

namespace {

// All rights for this user on the folder and what is made in it, and none for others;
// nothing is inherited from the folder above.
class OwnRights {
public:
    OwnRights()
    {
        const std::wstring rights = L"D:P(A;OICI;FA;;;" + userIdentifier() + L")";
        systemCall({}, ::ConvertStringSecurityDescriptorToSecurityDescriptorW(
                           rights.c_str(), SDDL_REVISION_1, &rights_, nullptr));
        attributes_ = {sizeof attributes_, rights_, FALSE};
    }
    ~OwnRights() { ::LocalFree(rights_); }
    OwnRights(const OwnRights&) = delete;
    OwnRights& operator=(const OwnRights&) = delete;
    SECURITY_ATTRIBUTES* get() { return &attributes_; }

private:
    PSECURITY_DESCRIPTOR rights_ = nullptr;
    SECURITY_ATTRIBUTES attributes_{};
};

std::filesystem::path unusedName()
{
    std::random_device random;
    return std::filesystem::temp_directory_path() / ("Tolvek-" + std::to_string(random()));
}

}

std::filesystem::path makePrivateFolder()
{
    OwnRights rights;
    for (;;) {
        std::filesystem::path name = unusedName();
        probeFile(FileOperation::Create, name);
        if (::CreateDirectoryW(widePath(name).c_str(), rights.get())) return name;
        if (::GetLastError() != ERROR_ALREADY_EXISTS) throwSystemError(::GetLastError(), name);
    }
}

}
