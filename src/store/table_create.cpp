#include "store/table_create.h"

#include "app/database.h"
#include "app/file_names.h"
#include "app/guard.h"
#include "platform/runtime/do_events.h"
#include "platform/runtime/msg_box.h"
#include "store/database_files.h"
#include "store/db_start.h"
#include "store/kept_files.h"
#include "store/schema.h"

namespace tolvek {

namespace {

// The general sort order, which applies to every comparison and every ORDER BY.
constexpr TextView kGeneralOrder = u";LANGID=0x0409;CP=1252;COUNTRY=0";

void createTable(TextView routine, const TableSpec& spec)
{
    leaveOnError(routine, [&] {
        gDb.TableDefs().Append(tableDefinition(spec));
        DoEvents();
    });
}

void createTables()
{
    tblTolvek_Create();
    tblSearch_Addresses_Create();
    tblSearch_Name_Create();
    tblFriend_Create();
    tblFilter_Create();
    tblFilterData_Create();
}

// No is the default, because Yes discards the file: a key press that was meant for
// another window must not do that.
bool mayReplace()
{
    return !databaseExists(trim(gDbPath)) ||
           MsgBox(u"Fileは既に存在します。削除しますか？", MsgButtons::YesNo, u"Table Create",
                  MsgIcon::None, MsgAnswer::No) == MsgAnswer::Yes;
}

// If the user wasn't asked, there was no file. A file that another program has created
// since then stays, and the rename fails with 58.
void putInPlace(const Text& side, bool replaces)
{
    if (replaces)
        replaceDatabase(side, trim(gDbPath));
    else
        renameDatabase(side, trim(gDbPath));
}

// A file that can't be read may still be the only copy of a mail.
void keepUnreadable(const Text& path)
{
    if (!databaseExists(path)) return;
    if (isReadable(path))
        keepJetOriginal(path, path);
    else
        keepDamaged(path, path);
}

}

void Table_Create()
{
    leaveOnError(u"Table_Create", [] {
        if (!mayReplace()) return;
        const bool replaces = databaseExists(trim(gDbPath));
        const Text side = sideFile(trim(gDbPath), kCreateSuffix);
        if (databaseExists(side)) // of a creation that was cut off
            removeDatabase(side);
        gWs = DBEngine::Workspaces(0);
        gDb = gWs.CreateDatabase(side, kGeneralOrder);
        DoEvents();
        createTables();
        gDb.Close();
        keepUnreadable(trim(gDbPath));
        putInPlace(side, replaces);
        flushFolderOf(gDbPath);
    });
}

void tblTolvek_Create()
{
    createTable(u"tblTolvek_Create", tblTolvekSpec());
}

void tblSearch_Addresses_Create()
{
    createTable(u"tblSearch_Addresses_Create", tblSearch_AddressesSpec());
}

void tblSearch_Name_Create()
{
    createTable(u"tblSearch_Name_Create", tblSearch_NameSpec());
}

// Kept quirk: a failure is reported under the name of a routine of the text dump.
void tblFriend_Create()
{
    createTable(u"tblFilterData_UnLoad", tblFriendSpec());
}

void tblFilter_Create()
{
    createTable(u"tblFilter_Create", tblFilterSpec());
}

void tblFilterData_Create()
{
    createTable(u"tblFilterData_Create", tblFilterDataSpec());
}

}
