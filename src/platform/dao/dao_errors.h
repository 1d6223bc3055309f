// The errors of the database objects: SQLite's failures as error numbers of the classic
// platform, and the numbers that only its engine has.
#pragma once
#include "platform/runtime/runtime_error.h"
#include "platform/runtime/text.h"

struct sqlite3;

namespace tolvek {

class Connection;
struct SqlText;

// Decides by the result code and the connection's message. A constraint gives the error
// of the violated rule; 57 I/O error, 61 disk full, 75 no access, 3027 read-only,
// 3343 corrupt, 3356 locked by another program.
RuntimeError sqliteError(int code, sqlite3* connection, TextView path);

// The same without a connection.
RuntimeError sqliteError(int code, TextView message, TextView path);

// For a statement that the engine refuses to prepare: 3078 for a missing table, 3061 for
// unknown names (with their number), 3134 for a malformed INSERT, 3075 for anything else.
RuntimeError statementError(Connection& connection, const SqlText& statement, TextView message);

RuntimeError lockedError(TextView path);
RuntimeError readOnlyError();
RuntimeError noSuchItem(); // an unknown name or position in a collection

}
