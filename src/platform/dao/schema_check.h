// Only what this program makes is opened: a trigger or a view of somebody else's
// would run with the next statement.
//
// What a file says that it holds is taken apart, put together again by the rules
// by which the engine makes tables (column_rules.h), and has to be the same, word
// for word. Tables of any name and columns may be there, as they come from Jet
// files; views, virtual tables, other triggers and indexes on anything but
// columns may not. The tables that make an archive have to be there.
#pragma once
#include "platform/dao/connection.h"

namespace tolvek {

// No archive: 3343 for a file that this program made and that has lost tables, or
// whose tables read otherwise now; error `ifForeign` for anyone else's. Without
// archive tables set, every file is one.
void requireArchive(Connection& connection, int ifForeign);

void setArchiveTables(std::vector<TableDef> tables, DBEngine::IsArchive isArchive);

}
