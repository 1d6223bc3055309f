// The part of the system registry that the program reads.
//
// On a system without a registry a stand-in answers with a few values that say
// where a program is installed; it looks them up at each call. A key exists if it,
// or a key below it, has a value.
#pragma once
#include <cstdint>
#include <string>
#include <vector>

namespace tolvek {

inline constexpr std::uint32_t HKEY_LOCAL_MACHINE = 0x80000002;
inline constexpr std::uint32_t kRegistryString = 1;
inline constexpr std::uint32_t kRegistryNumber = 4; // 32 bits, little-endian
inline constexpr std::int32_t kRegistryFound = 0;   // any other result means failure

using RegistryKey = std::uintptr_t;

// Names and texts are UTF-8, with "\" between key names. Names match without regard
// to the case of ASCII letters.
std::int32_t RegOpenKeyExA(std::uint32_t root, const std::string& keyName, std::uint32_t access,
                           RegistryKey& key);
// On entry the size of `buffer` is the capacity; on return it holds the bytes of
// the value, a string's with its NUL. A value that doesn't fit is a failure.
std::int32_t RegQueryValueExA(RegistryKey key, const std::string& valueName, std::uint32_t& type,
                              std::string& buffer);
std::int32_t RegCloseKey(RegistryKey key);

struct RegistryValue {
    std::uint32_t root = 0;
    std::string keyName;
    std::string valueName;
    std::uint32_t type = 0;
    std::string bytes; // strings include their NUL
};
// The system's present values, restricted to those that the program asks for.
std::vector<RegistryValue> systemRegistry();

}
