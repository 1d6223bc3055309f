#include "platform/system/lock_down.h"

namespace tolvek {

// No call of the system takes a running process the right to open files. The parent has
// put it into a job in which it can start nothing.
bool lockDown()
{
    return false;
}

}
