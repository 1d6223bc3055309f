// The end of the program, at any moment.
#pragma once
#include <functional>

namespace tolvek {

// Ends the program at once, in the middle of anything: database rolled back,
// closed and on the disk, text files closed, no destructor run.
[[noreturn]] void endProgram(int code = 0);
// Tests take the end over; the hook must throw or not return.
void setEndHook(std::function<void(int)> hook);

}
