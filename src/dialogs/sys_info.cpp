#include "dialogs/sys_info.h"

#include "platform/runtime/msg_box.h"
#include "platform/runtime/numbers.h"
#include "platform/runtime/paths.h"
#include "platform/system/files.h"
#include "platform/system/process.h"
#include "platform/system/registry.h"

#include <algorithm>
#include <charconv>

namespace tolvek {

namespace {

constexpr std::uint32_t kAccess = 0x2003F; // read and write access, as in the tool's own setup
constexpr std::size_t kBufferSize = 1024;

// The tool's own path, and the folder of an older version.
constexpr TextView kToolKey = u"SOFTWARE\\Microsoft\\Shared Tools\\MSINFO";
constexpr TextView kToolValue = u"PATH";
constexpr TextView kFolderKey = u"SOFTWARE\\Microsoft\\Shared Tools Location";
constexpr TextView kFolderValue = u"MSINFO";
constexpr TextView kToolName = u"MSINFO32.EXE";

class OpenKey {
public:
    OpenKey(std::uint32_t root, const Text& name)
        : found_(RegOpenKeyExA(root, toUtf8(name), kAccess, key_) == kRegistryFound)
    {
    }
    ~OpenKey()
    {
        if (found_) RegCloseKey(key_);
    }
    OpenKey(const OpenKey&) = delete;
    OpenKey& operator=(const OpenKey&) = delete;

    bool query(const Text& valueName, std::uint32_t& type, std::string& buffer) const
    {
        return found_ && RegQueryValueExA(key_, toUtf8(valueName), type, buffer) == kRegistryFound;
    }

private:
    RegistryKey key_ = 0;
    bool found_;
};

std::string unpaddedHex(unsigned char byte)
{
    char digits[2];
    return {digits, std::to_chars(digits, digits + sizeof digits, unsigned{byte}, 16).ptr};
}

// The bytes are in little-endian order. Kept quirk: each byte's digits are written
// without a leading zero, so 0x1002 becomes 0x102. No such number is known to be kept
// in a path.
Text numberText(const std::string& bytes)
{
    if (bytes.find_first_not_of(' ') == std::string::npos) return {};
    std::string digits;
    for (auto byte = bytes.rbegin(); byte != bytes.rend(); ++byte)
        digits += unpaddedHex(static_cast<unsigned char>(*byte));
    return format(u"&h" + fromUtf8(digits), u"0");
}

bool startTool()
{
    Text path;
    if (!GetKeyValue(HKEY_LOCAL_MACHINE, Text(kToolKey), Text(kToolValue), path)) return false;
    startProgram(existingPath(path));
    return true;
}

bool startToolInFolder()
{
    Text folder;
    if (!GetKeyValue(HKEY_LOCAL_MACHINE, Text(kFolderKey), Text(kFolderValue), folder))
        return false;
    const Path tool = existingPath(joinPath(folder, kToolName));
    // An old entry may name a folder that has no tool any more.
    if (!fileExists(tool)) return false;
    startProgram(tool);
    return true;
}

bool startedOne()
{
    try {
        return startTool() || startToolInFolder();
    } catch (const std::exception&) {
        return false; // the caller's box reports every failure
    }
}

}

bool GetKeyValue(std::uint32_t root, const Text& keyName, const Text& valueName, Text& result)
{
    const OpenKey key(root, keyName);
    std::uint32_t type = 0;
    std::string buffer(kBufferSize, '\0');
    if (!key.query(valueName, type, buffer)) {
        result.clear();
        return false;
    }
    // A value may end in one NUL, in several or in none.
    buffer.resize(std::min(buffer.find('\0'), buffer.size()));
    if (type == kRegistryString) result = fromUtf8(buffer);
    if (type == kRegistryNumber) result = numberText(buffer);
    return true;
}

void StartSysInfo()
{
    if (!startedOne()) MsgBox(u"現時点ではｼｽﾃﾑ情報を使用できません");
}

}
