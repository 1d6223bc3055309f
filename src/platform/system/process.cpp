#include "platform/system/process.h"

#include <chrono>
#include <thread>

namespace tolvek {

void sleepMilliseconds(int count)
{
    std::this_thread::sleep_for(std::chrono::milliseconds(count));
}

}
