// Questions about a text that trim() would answer with a copy of it.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

inline constexpr TextView kBlanks = u" \u3000";

// True when nothing is left of the text once it is trimmed.
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
