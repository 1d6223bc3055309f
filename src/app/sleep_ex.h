// A wait that keeps the program responsive.
#pragma once
#include "platform/runtime/int16.h"

namespace tolvek {

// Waits that many milliseconds and yields after each. A failure is reported by
// ErrReportDb, and the wait goes on.
void SleepEX_Rtn(Int16 milliseconds);

}
