// A large archive for benchmarks: mails of about 2 KB each between 300 friends and one
// user, each at a different time. The same number gives the same rows.
#pragma once
#include "app/database.h"
#include "platform/dao/dao.h"
#include "platform/runtime/numbers.h"

namespace tolvek::bench {

inline constexpr int kFriends = 300;

inline Text addressOf(int who)
{
    return u"friend" + decimal(who) + u"@mail.example.jp";
}

// Two of three mails are received, the third is sent. The user has one address.
inline void storeMail(Database& into, int n)
{
    const bool sent = n % 3 == 2;
    const Text who = addressOf(n * 7 % kFriends), me = u"hana@example.jp";
    Statement sql{u"INSERT INTO tblTolvek (tblTolvek_YMD, tblTolvek_HMS, tblTolvek_SubKey, "
                  u"tblTolvek_SndRcvFlag, tblTolvek_SndName, tblTolvek_SndAdd, tblTolvek_RcvName, "
                  u"tblTolvek_RcvAdd, tblTolvek_Subject, tblTolvek_Mail1 ) VALUES( '"};
    sql << decimal(19990101 + n / 100) << u"', '" << decimal(100000 + n % 86400) << u"', 0, "
        << sent << u", '" << u"設定無し" << u"', '" << (sent ? me : who) << u"', '" << u"設定無し"
        << u"', '" << (sent ? who : me) << u"', 'Re: あのね その" << n % 1000 << u"', '"
        << Text(1000, u'本') << u"' )";
    into.Execute(sql, dbFailOnError);
}

// Fills the empty database at gDbPath.
inline void storeMails(int mails)
{
    Database into = DBEngine::OpenDatabase(gDbPath);
    inTransaction([&] {
        for (int n = 0; n < mails; ++n)
            storeMail(into, n);
    });
    into.Close();
}

}
