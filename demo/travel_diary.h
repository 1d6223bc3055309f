// One letter with more lines than the archive stores in one row.
#pragma once
#include "demo/letters.h"

namespace tolvek::sample {

inline constexpr int kDiaryDays = 62;
inline constexpr int kDiaryLines = kDiaryDays * 10 + 2; // none of them empty

Letter travelDiary();

}
