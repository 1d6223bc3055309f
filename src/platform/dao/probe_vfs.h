// SQLite's way to the disk, led past probeFile: the system's own file layer
// with one question before each operation, so that a test can make any of them
// fail or end the process there.
#pragma once

namespace tolvek {

// Registers the layer once and returns its name.
const char* probeVfs();

}
