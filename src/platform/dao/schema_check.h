// Refuses databases with a schema that this program wouldn't have made: a foreign trigger
// or view would run with the next statement.
//
// The schema of the file is parsed and generated again by the rules by which the engine
// creates tables (column_rules.h). The result must match the file's schema word for
// word. Tables of any name and columns are allowed, since they may come from Jet files.
// Views, virtual tables, other triggers, and indexes on expressions aren't. The tables
// of an archive must be present.
#pragma once
#include "platform/dao/connection.h"

namespace tolvek {

// If the file isn't an archive, error 3343 for a file that this program made, which has
// lost tables or whose schema has changed; error `ifForeign` for any other. If no archive
// tables are set, every file is accepted.
void requireArchive(Connection& connection, int ifForeign);

void setArchiveTables(std::vector<TableDef> tables, DBEngine::IsArchive isArchive);

}
