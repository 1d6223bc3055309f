// The yield to pending events that long work makes at its fixed points.
//
// Cheap enough to be called for every line and row: not more than one real
// turn of the event loop each 5 ms. A tick of the clock is never starved.
#pragma once

namespace tolvek {

void DoEvents();

}
