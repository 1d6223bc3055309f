// The database objects shared by all routines, and the row count of a recordset.
#pragma once
#include "platform/dao/dao.h"
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

namespace tolvek {

// Valid inside one routine only: each routine opens what it needs on gDbPath and closes
// it when it is done.
extern Database gDb;
// The default workspace, which runs the transactions.
extern Workspace gWs;
// The recordset of the routine that runs.
extern Recordset gRs;
extern Text gDbPath; // the live database, or the backup on display

// Opens gDb on gDbPath, with gWs for its transactions.
void openArchive();

// Runs a statement on gDb in a transaction of its own. A failure leaves nothing
// of it and goes to the caller.
void executeInTransaction(const Statement& sql);

// Counts all rows; the recordset is on its first row afterwards. Reports its own
// failures. Beyond 32767 rows that is error 6: gDb is closed and count stays 32767.
void GET_RECCNT(Recordset& recordset, Int16& count);

}
