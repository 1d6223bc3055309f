// What is wrong with a statement that the engine refuses to prepare.
#pragma once
#include "platform/dao/connection.h"
#include "platform/runtime/runtime_error.h"

namespace tolvek {

// Missing table 3078, unknown names 3061 with their count, a malformed INSERT
// 3134, anything else 3075.
RuntimeError statementError(Connection& connection, const SqlText& statement, TextView message);

}
