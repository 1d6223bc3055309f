// A file layer for SQLite: the system's own, with a call of probeFile before each
// operation, so that a test can make any of them fail or end the process there.
#pragma once

namespace tolvek {

// Registers the layer once and returns its name.
const char* probeVfs();

}
