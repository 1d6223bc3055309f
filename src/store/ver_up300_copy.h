// Copies the rows of an older archive, table by table, by statements on the new
// database, which is gDb.
//
// Kept quirk: texts aren't escaped in the statements, so a text with an apostrophe
// makes its statement fail. Two mails that agree in all other key fields fail too,
// because no old mail has a sub key and all get 0. Failures are RuntimeError.
#pragma once
#include "platform/dao/dao.h"
#include "store/ver_up300.h"

namespace tolvek {

// An empty table is skipped without a progress line. Each row is one transaction. The
// rows of a table are counted by GET_RECCNT.
void copyOldTables(Database& old, const UpgradeProgress& progress);

}
