// Writes the names of a friend book over an archive of N mails (30,000 by default) of
// 300 friends, as the end of each read does, from several starting states. Prints
// wall-clock and processor seconds, and the ratio to a plain pass over all rows.
//
//     tolvek_friend_bench [N]
#include "app/database.h"
#include "app/settings.h"
#include "bench/big_archive.h"
#include "friend/friend_names.h"
#include "platform/dao/dao.h"
#include "platform/runtime/paths.h"
#include "store/table_create.h"
#include "support/temp_folder.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>

namespace {

using namespace tolvek;
using bench::addressOf;
using bench::kFriends;
using Clock = std::chrono::steady_clock;

double passSeconds = 0; // of the plain pass, which runs first

double measure(const char* name, const std::function<void()>& work)
{
    const auto start = Clock::now();
    const std::clock_t processor = std::clock();
    {
        const DBEngine::Session session;
        work();
    }
    const double taken = std::chrono::duration<double>(Clock::now() - start).count();
    const double busy = static_cast<double>(std::clock() - processor) / CLOCKS_PER_SEC;
    if (passSeconds == 0) passSeconds = taken;
    std::printf("%-46s %7.3f s %7.3f s %8.1f passes\n", name, taken, busy, taken / passSeconds);
    return taken;
}

void addFriend(Database& into, const Text& address, const Text& name)
{
    Statement sql{u"INSERT INTO tblFriend (tblFriend_PetKind, tblFriend_Pet, tblFriend_Name, "
                  u"tblFriend_Address, tblFriend_RecvMailCnt ) VALUES( 'くま', 'もも', '"};
    sql << name << u"', '" << address << u"', 0 )";
    into.Execute(sql, dbFailOnError);
}

// Gives every friend a name with this beginning; `withUser` adds the user to the book.
void makeBook(TextView beginning, bool withUser)
{
    Database into = DBEngine::OpenDatabase(gDbPath);
    inTransaction([&] {
        into.Execute(Statement{u"DELETE FROM tblFriend"}, dbFailOnError);
        for (int who = 0; who < kFriends; ++who)
            addFriend(into, addressOf(who), Text(beginning) + decimal(who));
        if (withUser) addFriend(into, u"hana@example.jp", Text(beginning));
    });
    into.Close();
}

// Reads a name field of every mail and does nothing with it.
void passOverAll()
{
    Database from = DBEngine::OpenDatabase(gDbPath);
    for (Recordset row = from.OpenRecordset(Statement{u"SELECT * FROM tblTolvek"}); !row.Eof();
         row.MoveNext())
        row.field(u"tblTolvek_SndName");
    from.Close();
}

void measureBooks()
{
    makeBook(u"ともだち", false);
    measure("300 friends, every name is new", edFriendName);
    measure("300 friends, every name is stored already", edFriendName);
    makeBook(u"むかしからのともだち", false);
    measure("300 friends, every name is a longer one", edFriendName);
    makeBook(u"なかま", true);
    measure("and the user among them, every name is new", edFriendName);
    measure("and the user among them, every name is stored", edFriendName);
}

}

int main(int argc, char** argv)
{
    const test::TempFolder home;
    setAppPath(pathText(home.path()));
    gDbPath = joinPath(appPath(), u"Tolvek.Mdb");
    gMyMailAddr = u"hana@example.jp";
    gMyPetName = u"もも";
    Table_Create();
    bench::storeMails(argc > 1 ? std::atoi(argv[1]) : 30000);
    measure("a pass that reads every name", passOverAll);
    measureBooks();
    return 0;
}
