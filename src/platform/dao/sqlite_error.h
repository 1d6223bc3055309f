// What SQLite's failures are on the platform.
#pragma once
#include "platform/runtime/runtime_error.h"
#include "platform/runtime/text.h"

#include <sqlite3.h>

namespace tolvek {

// By the result code and the connection's message: constraints by the name of
// the broken rule, 57 a failing device, 61 full disk, 75 no access, 3027 read-only,
// 3343 damaged, 3356 held by another program.
RuntimeError sqliteError(int code, sqlite3* connection, TextView path);

// The same without a connection to ask.
RuntimeError sqliteError(int code, TextView message, TextView path);

RuntimeError lockedError(TextView path);
RuntimeError readOnlyError();

}
