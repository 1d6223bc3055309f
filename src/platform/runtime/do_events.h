// The yield: lets pending events run at fixed points of long work.
//
// DoEvents is cheap enough to be called for every line and row: it makes a real
// turn of the event loop at most once every 5 ms. It never starves the clock's
// tick. DoEventsNow always makes a turn, for the points where queued events must
// meet the controls in their present state. Both may be called inside events, do
// nothing once the application has begun to quit, and respect InputHold (forms).
//
// A program without windows has no event loop; its yields do nothing.
#pragma once

namespace tolvek {

void DoEvents();
void DoEventsNow();

// The event loop that yields run; set by the layer that has windows.
struct EventLoop {
    bool (*isRunning)(); // whether a turn may be made
    void (*turn)();
};
void setEventLoop(const EventLoop& loop);

}
