// Month names as mail programs of many countries write them.
#pragma once
#include <string_view>

namespace tolvek {

// 1 to 12, else 0. By the English name's first three letters in any case, or
// by the beginning of a name of another language; accents don't count.
int monthNumber(std::string_view word);

}
