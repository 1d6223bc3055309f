#include "store/archive_tables.h"

#include "store/database_files.h"

#include <algorithm>

namespace tolvek {

namespace {

bool isArchive(const std::vector<TableDef>& found)
{
    return std::ranges::all_of(allTableSpecs(), [&](const TableSpec& spec) {
        return std::ranges::any_of(found, [&](const TableDef& table) {
            return isMade(table, spec) || isMade(table, olderForm(spec));
        });
    });
}

bool lacksSubKey(const Text& path)
{
    Database database = DBEngine::OpenDatabase(path);
    try {
        database.OpenRecordset(Statement{u"SELECT tblTolvek_SubKey FROM tblTolvek"});
    } catch (const RuntimeError& error) {
        if (error.number() == 3061) return true; // the statement names an unknown field
        throw;
    }
    return false;
}

}

void registerArchiveTables()
{
    std::vector<TableDef> tables;
    for (const TableSpec& spec : allTableSpecs())
        tables.push_back(tableDefinition(spec));
    DBEngine::setArchiveTables(std::move(tables), isArchive);
}

bool isOldArchive(const Text& path)
{
    try {
        return databaseExists(path) && lacksSubKey(path);
    } catch (const RuntimeError&) {
        return false; // the next opening reports it
    }
}

}
