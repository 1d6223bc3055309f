// The system's registry, as far as the program reads it.
//
// Where the system has none, a stand-in answers: a handful of values that say
// where a program is installed, looked for at each call. A key is there when it,
// or one below it, has a value. Tests put values of their own in its place.
#pragma once
#include <cstdint>
#include <string>
#include <vector>

namespace tolvek {

inline constexpr std::uint32_t HKEY_LOCAL_MACHINE = 0x80000002;
inline constexpr std::uint32_t kRegistryString = 1;
inline constexpr std::uint32_t kRegistryNumber = 4; // 32 bits, lowest byte first
inline constexpr std::int32_t kRegistryFound = 0;   // any other result is a failure

using RegistryKey = std::uintptr_t;

// Names and texts are UTF-8, with "\" between the keys; of names, the case of
// ASCII letters doesn't count.
std::int32_t RegOpenKeyExA(std::uint32_t root, const std::string& keyName, std::uint32_t access,
                           RegistryKey& key);
// buffer comes with its size and leaves with the bytes of the value, a string's
// with its NUL. A value that doesn't fit is a failure.
std::int32_t RegQueryValueExA(RegistryKey key, const std::string& valueName, std::uint32_t& type,
                              std::string& buffer);
std::int32_t RegCloseKey(RegistryKey key);

// Tests: these values alone are then found. Gone with resetRegistry.
void setRegistryValue(std::uint32_t root, const std::string& keyName, const std::string& valueName,
                      std::uint32_t type, const std::string& bytes);
void clearRegistry(); // no value at all is found
void resetRegistry();

struct RegistryValue {
    std::uint32_t root = 0;
    std::string keyName;
    std::string valueName;
    std::uint32_t type = 0;
    std::string bytes; // a string's with its NUL
};
// What the system has at this moment of the values that the program asks for.
std::vector<RegistryValue> systemRegistry();

}
