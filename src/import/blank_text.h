// Questions about a text that trim() could only answer by copying it.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

inline constexpr TextView kBlanks = u" \u3000";

// True when trimming would leave nothing.
inline bool isBlank(TextView text)
{
    return text.find_first_not_of(kBlanks) == TextView::npos;
}

inline int trimmedLength(TextView text)
{
    if (isBlank(text)) return 0;
    return static_cast<int>(text.find_last_not_of(kBlanks) - text.find_first_not_of(kBlanks) + 1);
}

}
