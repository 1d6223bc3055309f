// The rows of an archive of an older version, table by table, as statements on
// the new database that gDb stands for.
//
// A text goes into its statement as it is: one with an apostrophe makes the
// statement fail, and so does a mail that agrees with another in everything but
// the sub key, which none has yet. Failures are RuntimeError.
#pragma once
#include "platform/dao/dao.h"
#include "store/ver_up300.h"

namespace tolvek {

// Empty tables are passed over without a progress line. Each row is one
// transaction; the count of a table's rows is GET_RECCNT's.
void copyOldTables(Database& old, const UpgradeProgress& progress);

}
