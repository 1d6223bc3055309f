// Works of the program on a small archive, each of which is disturbed at one of its file
// operations, and what must hold for the mails afterwards.
//
// ./test disturbs some operations of each work, always the same ones; with TOLVEK_SOAK=1
// in the environment, every one. See README.md.
#pragma once
#include "held_program.h"
#include "import/tolvek_db.h"
#include "platform/dao/connection.h"
#include "power_cut.h"
#include "shell/tolvek_main.h"
#include "store/db_compress.h"
#include "support/backup_fixture.h"
#include "support/upgrade_fixture.h"

#include <set>

namespace tolvek::test {

// The number of operations that are skipped between two that are disturbed.
inline int soakStep(int inShort)
{
    return std::getenv("TOLVEK_SOAK") ? 1 : inShort;
}

using Subjects = std::set<Text>;

inline Subjects subjectsAt(const Text& path)
{
    Database opened = DBEngine::OpenDatabase(path);
    Subjects found;
    for (Recordset row =
             opened.OpenRecordset(Statement{u"SELECT tblTolvek_Subject FROM tblTolvek"});
         !row.Eof(); row.MoveNext())
        found.insert(row.field(0).text());
    opened.Close();
    return found;
}

// Stores a mail like a read, but without boxes; returns the number of its failure.
inline int errorOfStoring(const Text& subject)
{
    try {
        const DBEngine::Session session;
        gDb = DBEngine::OpenDatabase(gDbPath);
        Statement sql{u"INSERT INTO tblTolvek (tblTolvek_YMD, tblTolvek_HMS, tblTolvek_SubKey, "
                      u"tblTolvek_SndRcvFlag, tblTolvek_SndName, tblTolvek_SndAdd, "
                      u"tblTolvek_RcvName, tblTolvek_RcvAdd, tblTolvek_Subject ) VALUES( "
                      u"'20010101', '101112', 0, False, '花', 'a@b.jp', '太', 'c@d.jp', '"};
        sql << subject << u"' )";
        inTransaction([&] { gDb.Execute(sql, dbFailOnError); });
        gDb.Close();
        return 0;
    } catch (const RuntimeError& error) {
        gDb.Close();
        return error.number();
    }
}

// Runs until the program ends; every question is answered with Yes.
inline void tillItsEnd(const std::function<void()>& work)
{
    try {
        work();
    } catch (const ProgramEnd&) { // the program ends where going on could lose mail
    }
}

}
