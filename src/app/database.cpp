#include "app/database.h"

#include "app/guard.h"
#include "platform/runtime/do_events.h"

namespace tolvek {

Database gDb;
Workspace gWs;
Recordset gRs;
Text gDbPath;

void GET_RECCNT(Recordset& recordset, Int16& count)
{
    leaveOnError(u"GET_RECCNT", [&] {
        count = 0;
        if (recordset.NoMatch() || recordset.RecordCount() == 0) return;
        while (!recordset.Eof()) {
            ++count; // a 16-bit integer: beyond 32767 this is the routine's own failure
            recordset.MoveNext();
            DoEvents();
        }
        if (count != 0) recordset.MoveFirst();
    });
}

}
