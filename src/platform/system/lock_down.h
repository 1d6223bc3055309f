// Shuts this process in with what it has open: for a program that is about to
// work on a file which may have been made to take it over.
#pragma once

namespace tolvek {

// From here on the process can compute, take and give back memory, read and
// write what it has open, and end. Opening anything, by name or by network,
// starting a program or a thread, and reaching another process all fail as not
// permitted, for good. False where the system gives no such lock (an older
// kernel, a container that forbids it): then all is as before.
bool lockDown();

}
