#include "app/database.h"

#include "app/guard.h"
#include "platform/runtime/do_events.h"

namespace tolvek {

Database gDb;
Workspace gWs;
Recordset gRs;
Text gDbPath;

void openArchive()
{
    gWs = DBEngine::Workspaces(0);
    gDb = DBEngine::OpenDatabase(gDbPath);
}

void executeInTransaction(const Statement& sql)
{
    inTransaction([&] { gDb.Execute(sql, dbFailOnError); });
}

void GET_RECCNT(Recordset& recordset, Int16& count)
{
    leaveOnError(u"GET_RECCNT", [&] {
        count = 0;
        if (recordset.NoMatch() || recordset.RecordCount() == 0) return;
        while (!recordset.Eof()) {
            ++count; // throws error 6 (overflow) beyond 32767
            recordset.MoveNext();
            DoEvents();
        }
        if (count != 0) recordset.MoveFirst();
    });
}

}
