// For tests: what runs at each yield (do_events.h), which then is a real turn of
// the event loop however soon it comes. An empty function takes it away.
#pragma once
#include <functional>

namespace tolvek {

void setYieldHook(std::function<void()> hook);

}
