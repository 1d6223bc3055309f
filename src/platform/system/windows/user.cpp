#include "platform/system/windows/user.h"

#include "platform/system/windows/handle.h"

#include <sddl.h>

#include <vector>

namespace tolvek {

namespace {

Handle ownToken()
{
    HANDLE token = nullptr;
    return Handle(::OpenProcessToken(::GetCurrentProcess(), TOKEN_QUERY, &token) ? token : nullptr);
}

}

std::wstring userIdentifier()
{
    const Handle token = ownToken();
    DWORD size = 0;
    ::GetTokenInformation(token.get(), TokenUser, nullptr, 0, &size);
    std::vector<std::byte> about(size);
    if (size == 0 || !::GetTokenInformation(token.get(), TokenUser, about.data(), size, &size))
        return {};
    wchar_t* text = nullptr;
    if (!::ConvertSidToStringSidW(reinterpret_cast<TOKEN_USER*>(about.data())->User.Sid, &text))
        return {};
    std::wstring identifier(text);
    ::LocalFree(text);
    return identifier;
}

}
