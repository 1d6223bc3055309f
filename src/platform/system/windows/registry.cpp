#include "platform/system/registry.h"

#include "platform/system/files.h"
#include "platform/system/windows/wide_path.h"
#include "platform/system/windows/windows_api.h"

#include <optional>

namespace tolvek {

namespace {

struct KnownValue {
    const char* keyName;
    const char* valueName;
};
// Where the system information tool is: its path, or its folder.
constexpr KnownValue kPath{R"(SOFTWARE\Microsoft\Shared Tools\MSINFO)", "PATH"};
constexpr KnownValue kFolder{R"(SOFTWARE\Microsoft\Shared Tools Location)", "MSINFO"};

std::optional<std::string> machineValue(const KnownValue& value, DWORD view)
{
    const auto machine = reinterpret_cast<HKEY>(ULONG_PTR{HKEY_LOCAL_MACHINE});
    std::wstring text(1024, L'\0');
    auto size = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    // With variables such as %ProgramFiles% replaced.
    if (::RegGetValueW(machine, wideText(value.keyName).c_str(), wideText(value.valueName).c_str(),
                       RRF_RT_REG_SZ | RRF_RT_REG_EXPAND_SZ | RRF_ZEROONFAILURE | view, nullptr,
                       text.data(), &size) != ERROR_SUCCESS)
        return std::nullopt;
    text.resize(text.find(L'\0'));
    return utf8Text(text);
}

// A 64-bit system has two sets of these keys.
void add(std::vector<RegistryValue>& values, const KnownValue& known)
{
    for (const DWORD view : {RRF_SUBKEY_WOW6464KEY, RRF_SUBKEY_WOW6432KEY})
        if (const auto text = machineValue(known, view)) {
            values.push_back({HKEY_LOCAL_MACHINE, known.keyName, known.valueName, kRegistryString,
                              *text + '\0'});
            return;
        }
}

// Today's systems have the tool in their own folder and no entry about it.
void addToolOfSystem(std::vector<RegistryValue>& values)
{
    wchar_t folder[MAX_PATH] = {};
    const UINT size = ::GetSystemDirectoryW(folder, MAX_PATH);
    const auto tool = std::filesystem::path(folder) / L"msinfo32.exe";
    if (size == 0 || size >= MAX_PATH || !fileExists(tool)) return;
    values.push_back({HKEY_LOCAL_MACHINE, kPath.keyName, kPath.valueName, kRegistryString,
                      tool.string() + '\0'});
}

}

std::vector<RegistryValue> systemRegistry()
{
    std::vector<RegistryValue> values;
    add(values, kPath);
    add(values, kFolder);
    if (values.empty()) addToolOfSystem(values);
    return values;
}

}
