#include "store/db_start.h"

#include "platform/dao/dao.h"
#include "platform/runtime/runtime_error.h"
#include "store/database_files.h"
#include "store/schema.h"

#include <algorithm>

namespace tolvek {

namespace {

bool hasAllTables(const Text& path)
{
    Database database = DBEngine::OpenDatabase(path);
    const std::vector<Text> names = database.TableDefs().names();
    database.Close();
    const TableSpec wanted[] = {tblTolvekSpec(), tblSearch_AddressesSpec(), tblSearch_NameSpec(),
                                tblFriendSpec(), tblFilterSpec(),           tblFilterDataSpec()};
    return std::all_of(std::begin(wanted), std::end(wanted), [&](const TableSpec& table) {
        return std::find(names.begin(), names.end(), table.name) != names.end();
    });
}

// A compaction reads every page of its source and checks what it wrote: what
// comes through it is whole. False for a file that can't be read as a database.
bool copiedWhole(const Text& source, const Text& target)
{
    try {
        if (!hasAllTables(source)) return false;
        DBEngine::CompactDatabase(source, target);
        return true;
    } catch (const RuntimeError& error) {
        if (error.number() != 3343) throw;
        return false;
    }
}

// What can't be read may hold mail all the same.
bool mayHoldMail(const Text& path)
{
    try {
        Database database = DBEngine::OpenDatabase(path);
        const bool hasRows =
            database.OpenRecordset(Statement{u"SELECT tblTolvek_YMD FROM tblTolvek"})
                .RecordCount() != 0;
        database.Close();
        return hasRows;
    } catch (const RuntimeError&) {
        return true;
    }
}

Text freeName(const Text& wanted)
{
    Text name = wanted;
    for (int n = 2; databaseExists(name); ++n)
        name = wanted + decimal(n);
    return name;
}

}

void restoreFromNew(const Text& path)
{
    const Text fresh = path + u".New";
    const Text side = path + u".Whole";
    if (databaseExists(path) || !databaseExists(fresh)) return;
    if (databaseExists(side)) removeDatabase(side);
    if (!copiedWhole(fresh, side)) return;
    renameDatabase(side, path);
    flushFolderOf(path);
    removeDatabase(fresh);
}

void keepBackUpAside(const Text& path)
{
    const Text previous = path + u".Bak";
    if (!databaseExists(previous) || !mayHoldMail(previous)) return;
    renameDatabase(previous, freeName(path + u".Kept"));
    flushFolderOf(path);
}

}
