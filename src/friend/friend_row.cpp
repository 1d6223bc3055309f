#include "friend/friend_row.h"

#include "app/database.h"

namespace tolvek {

bool findFriend(const Text& address)
{
    Statement sql{u"SELECT * FROM tblFriend"};
    sql << u" WHERE (" << u" tblFriend_Address = '" << address << u"' )";
    gRs = gDb.OpenRecordset(sql, dbOpenDynaset);
    Int16 count = 0;
    GET_RECCNT(gRs, count);
    return count != 0;
}

}
