// The end of the program, at any moment.
#pragma once
#include <functional>

namespace tolvek {

// Ends the program at once, from any call depth. Open transactions are rolled back, the
// database is closed and flushed, text files are closed. No destructor runs.
[[noreturn]] void endProgram(int code = 0);
// For tests: called instead of leaving the process. The hook must throw or not return.
void setEndHook(std::function<void(int)> hook);

}
