#include "app/sleep_ex.h"

#include "app/guard.h"
#include "platform/runtime/do_events.h"
#include "platform/system/process.h"

namespace tolvek {

void SleepEX_Rtn(Int16 milliseconds)
{
    for (int i = 0; i < milliseconds; ++i) {
        leaveOnError(u"SleepEX_Rtn", [] { sleepMilliseconds(1); });
        leaveOnError(u"SleepEX_Rtn", [] { DoEvents(); });
    }
}

}
