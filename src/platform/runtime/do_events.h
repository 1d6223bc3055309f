// The yield to pending events that long work makes at its fixed points.
//
// DoEvents is cheap enough to be called for every line and row: not more than
// one real turn of the event loop each 5 ms. A tick of the clock is never
// starved. DoEventsNow always makes a turn: for the points where what is queued
// must meet the controls as they are now. Both may be called inside events, do
// nothing once the application has begun to quit, and heed InputHold (forms).
//
// A program without windows has no event loop: its yields are empty.
#pragma once

namespace tolvek {

void DoEvents();
void DoEventsNow();

// The loop whose turns these are; set by the layer that has windows.
struct EventLoop {
    bool (*isRunning)(); // a turn may be made
    void (*turn)();
};
void setEventLoop(const EventLoop& loop);

}
