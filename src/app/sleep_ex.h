// A wait in which the program stays alive.
#pragma once
#include "platform/runtime/int16.h"

namespace tolvek {

// Waits that many milliseconds and yields after each. A failure is reported as
// of a database routine, and the wait goes on.
void SleepEX_Rtn(Int16 milliseconds);

}
