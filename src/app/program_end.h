// The end of the program, at any moment.
#pragma once

namespace tolvek {

// Ends the program at once, from any call depth. Open transactions are rolled back, the
// database is closed and flushed, text files are closed. No destructor runs.
[[noreturn]] void endProgram(int code = 0);

}
