#include "store/known_tables.h"

#include "store/archive_tables.h"

#include <algorithm>

namespace tolvek {

namespace {

// The fields that were added after version 2.10.
constexpr TextView kLaterFields[] = {u"tblTolvek_SubKey", u"tblTolvek_Include",
                                     u"tblFilterDt_SubKey"};

bool isSameName(TextView a, TextView b)
{
    return lowerCase(a) == lowerCase(b);
}

bool hasField(const TableDef& table, const FieldSpec& wanted)
{
    return std::ranges::any_of(table.Fields.items(), [&](const Field& field) {
        return isSameName(field.Name, wanted.name) && field.Type == wanted.type;
    });
}

// Exactly these fields, in any order.
bool isMade(const TableSpec& spec, const TableDef& table)
{
    return isSameName(spec.name, table.Name) && spec.fields.size() == table.Fields.items().size() &&
           std::ranges::all_of(spec.fields,
                               [&](const FieldSpec& field) { return hasField(table, field); });
}

std::optional<TableDef> ownTable(const TableDef& found)
{
    for (const TableSpec& spec : allTableSpecs())
        if (isMade(spec, found)) return tableDefinition(spec);
    return std::nullopt;
}

std::vector<TableSpec> olderSpecs()
{
    std::vector<TableSpec> specs = allTableSpecs();
    for (TableSpec& spec : specs)
        std::erase_if(spec.fields, [](const FieldSpec& field) {
            return std::ranges::find(kLaterFields, TextView(field.name)) != std::end(kLaterFields);
        });
    return specs;
}

bool holdsAll(const std::vector<TableDef>& found, const std::vector<TableSpec>& specs)
{
    return std::ranges::all_of(specs, [&](const TableSpec& spec) {
        return std::ranges::any_of(found,
                                   [&](const TableDef& table) { return isMade(spec, table); });
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
