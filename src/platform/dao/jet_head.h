// How a file begins, and by what one of the home platform's engine is told.
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

inline constexpr int kJetNotUnderstood = 3041; // the error's number

// 3, 4, or a larger one for those that came later.
inline int jetVersion(const FileHead& head)
{
    return head[20] + 3;
}

}
