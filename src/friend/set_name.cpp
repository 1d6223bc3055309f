#include "friend/set_name.h"

#include "shell/base/general.h"
#include "shell/base/guard.h"

namespace tolvek {

void setName(const Text& address, Text& name)
{
    leaveOnError(u"setName", [&] {
        gDb = DBEngine::OpenDatabase(gDbPath);
        Statement sql{u"SELECT * FROM tblFriend"};
        sql << u" WHERE (" << u" tblFriend_Address = '" << address << u"' )";
        gRs = gDb.OpenRecordset(sql, dbOpenDynaset);
        Int16 count = 0;
        GET_RECCNT(gRs, count);
        if (count != 0) {
            name = gRs.field(u"tblFriend_Name").text();
            if (name.empty()) name = gRs.field(u"tblFriend_Pet").text();
        }
        gDb.Close();
    });
}

}
