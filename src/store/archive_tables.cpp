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

std::optional<TableDef> ownTable(const TableDef& found)
{
    for (const TableSpec& spec : allTableSpecs())
        if (isMade(found, spec)) return tableDefinition(spec);
    return std::nullopt;
}

std::vector<TableSpec> olderSpecs()
{
    std::vector<TableSpec> specs;
    for (const TableSpec& spec : allTableSpecs())
        specs.push_back(olderForm(spec));
    return specs;
}

bool holdsAll(const std::vector<TableDef>& found, const std::vector<TableSpec>& specs)
{
    return std::ranges::all_of(specs, [&](const TableSpec& spec) {
        return std::ranges::any_of(found,
                                   [&](const TableDef& table) { return isMade(table, spec); });
    });
}

bool isOurs(const TableDef& table)
{
    return std::ranges::any_of(
        allTableSpecs(), [&](const TableSpec& spec) { return isSameName(spec.name, table.Name); });
}

// A Jet file with none of the six tables isn't an archive and has lost none; opening
// it is refused elsewhere. One with some of them has lost the others.
bool areWhole(const std::vector<TableDef>& found)
{
    return std::ranges::none_of(found, isOurs) || holdsAll(found, allTableSpecs()) ||
           holdsAll(found, olderSpecs());
}

}

void registerArchiveTables()
{
    std::vector<TableDef> tables;
    for (const TableSpec& spec : allTableSpecs())
        tables.push_back(tableDefinition(spec));
    DBEngine::setKnownTables({ownTable, areWhole});
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
