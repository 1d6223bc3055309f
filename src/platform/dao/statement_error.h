// The error for a statement that the engine refuses to prepare.
#pragma once
#include "platform/dao/connection.h"
#include "platform/runtime/runtime_error.h"

namespace tolvek {

// 3078 for a missing table, 3061 for unknown names (with their number), 3134 for a
// malformed INSERT, 3075 for anything else.
RuntimeError statementError(Connection& connection, const SqlText& statement, TextView message);

}
