// For tests alone: answers message boxes, watches the yields and fixes the clock. A hook
// stays until it is set again; an empty argument restores the real thing.
#pragma once
#include "platform/runtime/dates.h"
#include "platform/runtime/msg_box.h"

#include <functional>

namespace tolvek::hooks {

// Answers instead of the screen.
void setMsgBox(std::function<MsgAnswer(const MsgBoxRequest&)> answer);

// Runs at each yield (do_events.h). While it is set, every yield is a real turn of the
// event loop, whatever the time since the last one.
void setYield(std::function<void()> atEach);

void setClock(DateTime (*clock)());

}
