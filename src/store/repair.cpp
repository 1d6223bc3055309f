#include "store/repair.h"

#include "platform/dao/dao.h"
#include "store/archive_tables.h"
#include "store/database_files.h"

namespace tolvek {

namespace {

// As Table_Create, but without its questions, reports and yields, and not in gDb.
void createEmpty(const Text& path)
{
    Database made = DBEngine::Workspaces(0).CreateDatabase(path, u"");
    for (const TableSpec& spec : allTableSpecs())
        made.TableDefs().Append(tableDefinition(spec));
    made.Close();
}

// False if the .Bak can't be read as a database; `side` then doesn't exist.
bool isCopied(const Text& previous, const Text& side)
{
    try {
        DBEngine::CompactDatabase(previous, side);
        return true;
    } catch (const RuntimeError& error) {
        if (error.number() != 3343 && error.number() != 3041) throw;
        return false;
    }
}

// Rules are renumbered whenever they are changed, so rules from two points in time
// can't be mixed. The other tables are derived from these. A copy in the older form has
// other columns, so nothing is added to it.
std::vector<TableDef> tablesToSalvage(const Text& target)
{
    if (isOldArchive(target)) return {};
    std::vector<TableDef> tables{tableDefinition(tblTolvekSpec()),
                                 tableDefinition(tblFriendSpec())};
    Database database = DBEngine::OpenDatabase(target);
    if (!database.HasRows(u"tblFilter")) tables.push_back(tableDefinition(tblFilterSpec()));
    database.Close();
    return tables;
}

}

Repair repairedFrom(const Text& damaged, const Text& previous, const Text& side)
{
    Repair repair;
    repair.previousIsWhole = isCopied(previous, side);
    if (!repair.previousIsWhole) createEmpty(side);
    std::vector<Text> sources{damaged};
    if (!repair.previousIsWhole) sources.push_back(previous);
    repair.salvaged = DBEngine::SalvageRows(sources, side, tablesToSalvage(side));
    if (repair.isNothing()) removeDatabase(side);
    return repair;
}

}
