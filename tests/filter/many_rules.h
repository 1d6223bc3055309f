// A table with more rules than the array in memory can hold.
#pragma once
#include "app/database.h"
#include "platform/dao/dao.h"

namespace tolvek::test {

inline void givenMany(int count)
{
    Database database = DBEngine::OpenDatabase(gDbPath);
    inTransaction([&] {
        for (int n = 1; n <= count; ++n) {
            Statement sql{u"INSERT INTO tblFilter ( tblFilter_No,tblFilter_TermsCode,"
                          u"tblFilter_ActionCode,tblFilter_Header,tblFilter_Data ) VALUES( "};
            sql << n * 10 << u", 0, 0, 'h', 'd' )";
            database.Execute(sql, dbFailOnError);
        }
    });
    database.Close();
}

}
