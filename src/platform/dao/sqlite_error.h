// Translates SQLite's failures to error numbers of the classic platform.
#pragma once
#include "platform/runtime/runtime_error.h"
#include "platform/runtime/text.h"

#include <sqlite3.h>

namespace tolvek {

// Decides by the result code and the connection's message. A constraint gives the error
// of the violated rule; 57 I/O error, 61 disk full, 75 no access, 3027 read-only,
// 3343 corrupt, 3356 locked by another program.
RuntimeError sqliteError(int code, sqlite3* connection, TextView path);

// The same without a connection.
RuntimeError sqliteError(int code, TextView message, TextView path);

RuntimeError lockedError(TextView path);
RuntimeError readOnlyError();

}
