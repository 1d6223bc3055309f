// For tests: runs at each yield (do_events.h). While a hook is set, every yield is
// a real turn of the event loop, whatever the time since the last one. An empty
// function removes the hook.
#pragma once
#include <functional>

namespace tolvek {

void setYieldHook(std::function<void()> hook);

}
