#include "store/known_tables.h"

#include "store/archive_tables.h"

#include <algorithm>

namespace tolvek {

namespace {

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

void registerKnownTables()
{
    DBEngine::setKnownTables({ownTable, areWhole});
    registerArchiveTables();
}

}
