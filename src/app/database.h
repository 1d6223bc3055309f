// The database objects that the routines share, and the count of a recordset's rows.
#pragma once
#include "platform/dao/dao.h"
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

namespace tolvek {

// Valid inside one routine only: whoever needs one opens it on gDbPath, works,
// and closes it.
extern Database gDb;
extern Workspace gWs;
extern Recordset gRs;
extern Text gDbPath; // the live database, or the backup on display

// The true number of rows; the recordset is on its first row afterwards.
// Reports its own failures (beyond 32767 rows: error 6, gDb closed, count 32767).
void GET_RECCNT(Recordset& recordset, Int16& count);

}
