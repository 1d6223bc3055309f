#include "friend/set_name.h"

#include "app/database.h"
#include "app/guard.h"
#include "friend/friend_row.h"

namespace tolvek {

void setName(const Text& address, Text& name)
{
    leaveOnError(u"setName", [&] {
        gDb = DBEngine::OpenDatabase(gDbPath);
        if (findFriend(address)) {
            name = gRs.field(u"tblFriend_Name").text();
            if (name.empty()) name = gRs.field(u"tblFriend_Pet").text();
        }
        gDb.Close();
    });
}

}
