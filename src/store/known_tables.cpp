#include "store/known_tables.h"

#include "store/schema.h"

#include <algorithm>

namespace tolvek {

namespace {

bool isSameName(TextView a, TextView b)
{
    return lowerCase(a) == lowerCase(b);
}

bool hasColumn(const std::vector<Text>& columns, const FieldSpec& field)
{
    return std::any_of(columns.begin(), columns.end(),
                       [&](const Text& column) { return isSameName(column, field.name); });
}

// Exactly these columns, in any order.
bool isMade(const TableSpec& spec, TextView table, const std::vector<Text>& columns)
{
    return isSameName(spec.name, table) && spec.fields.size() == columns.size() &&
           std::all_of(spec.fields.begin(), spec.fields.end(),
                       [&](const FieldSpec& field) { return hasColumn(columns, field); });
}

std::optional<TableDef> knownTable(TextView table, const std::vector<Text>& columns)
{
    for (const TableSpec& spec : allTableSpecs())
        if (isMade(spec, table, columns)) return tableDefinition(spec);
    return std::nullopt;
}

}

void registerKnownTables()
{
    DBEngine::setKnownTables(knownTable);
}

}
