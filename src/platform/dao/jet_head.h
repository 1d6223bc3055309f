// The first bytes of a file, and how a Jet file (the format of the classic platform's
// engine) is recognised.
#pragma once
#include <algorithm>
#include <array>
#include <string_view>

namespace tolvek {

using FileHead = std::array<unsigned char, 21>;

inline bool isJet(const FileHead& head)
{
    constexpr std::string_view name("Standard Jet DB\0", 16);
    return std::equal(name.begin(), name.end(), head.begin() + 4);
}

inline constexpr int kJetNotUnderstood = 3041; // an error number

// 3 or 4; larger for newer versions.
inline int jetVersion(const FileHead& head)
{
    return head[20] + 3;
}

}
