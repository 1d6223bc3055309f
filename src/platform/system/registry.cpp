#include "platform/system/registry.h"

#include "platform/system/test_hooks.h"

#include <algorithm>
#include <map>
#include <optional>

namespace tolvek {

namespace {

// The classic platform's error codes.
constexpr std::int32_t kNoSuchName = 2;
constexpr std::int32_t kNoSuchKey = 6; // the key isn't open
constexpr std::int32_t kBufferTooSmall = 234;

struct OpenKey {
    std::uint32_t root = 0;
    std::string name;
};

std::optional<std::vector<RegistryValue>>& valuesOfTests()
{
    static std::optional<std::vector<RegistryValue>> values;
    return values;
}

std::map<RegistryKey, OpenKey>& openKeys()
{
    static std::map<RegistryKey, OpenKey> keys;
    return keys;
}

std::vector<RegistryValue> currentValues()
{
    return valuesOfTests() ? *valuesOfTests() : systemRegistry();
}

std::string folded(std::string name)
{
    for (char& c : name)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return name;
}

bool isIn(const RegistryValue& value, const OpenKey& key)
{
    return value.root == key.root && folded(value.keyName) == key.name;
}

bool isBelow(const RegistryValue& value, const OpenKey& key)
{
    return value.root == key.root && folded(value.keyName).starts_with(key.name + "\\");
}

}

std::int32_t RegOpenKeyExA(std::uint32_t root, const std::string& keyName, std::uint32_t,
                           RegistryKey& key)
{
    static RegistryKey lastKey = 0;
    // Handles are never reused, so a closed one can't refer to a key opened later.
    const OpenKey wanted{root, folded(keyName)};
    const auto values = currentValues();
    const bool found = std::any_of(values.begin(), values.end(), [&](const RegistryValue& value) {
        return isIn(value, wanted) || isBelow(value, wanted);
    });
    if (!found) return kNoSuchName;
    key = ++lastKey;
    openKeys()[key] = wanted;
    return kRegistryFound;
}

std::int32_t RegQueryValueExA(RegistryKey key, const std::string& valueName, std::uint32_t& type,
                              std::string& buffer)
{
    const auto open = openKeys().find(key);
    if (open == openKeys().end()) return kNoSuchKey;
    const auto values = currentValues();
    const auto found = std::find_if(values.begin(), values.end(), [&](const RegistryValue& value) {
        return isIn(value, open->second) && folded(value.valueName) == folded(valueName);
    });
    if (found == values.end()) return kNoSuchName;
    if (found->bytes.size() > buffer.size()) return kBufferTooSmall;
    type = found->type;
    buffer = found->bytes;
    return kRegistryFound;
}

std::int32_t RegCloseKey(RegistryKey key)
{
    return openKeys().erase(key) == 1 ? kRegistryFound : kNoSuchKey;
}

void hooks::setRegistryValue(std::uint32_t root, const std::string& keyName,
                             const std::string& valueName, std::uint32_t type,
                             const std::string& bytes)
{
    // A test's first value hides all values of the system.
    if (!valuesOfTests()) hooks::clearRegistry();
    std::erase_if(*valuesOfTests(), [&](const RegistryValue& value) {
        return isIn(value, {root, folded(keyName)}) && folded(value.valueName) == folded(valueName);
    });
    valuesOfTests()->push_back({root, keyName, valueName, type, bytes});
}

void hooks::clearRegistry()
{
    valuesOfTests().emplace();
}

void hooks::resetRegistry()
{
    valuesOfTests().reset();
}

}
