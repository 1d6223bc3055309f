// Restricts this process to what it already has open, before it works on a file
// that may have been crafted to take it over.
#pragma once

namespace tolvek {

// Afterwards the process can compute, allocate and free memory, read and write its
// open descriptors, and exit. Opening anything, by name or over the network,
// starting a program or thread, and reaching another process all fail with "not
// permitted". This can't be undone. Returns false if the system doesn't support
// such a restriction (an older kernel, a container that forbids it); then nothing
// has changed.
bool lockDown();

}
