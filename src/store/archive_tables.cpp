#include "store/archive_tables.h"

#include "store/database_files.h"

#include <algorithm>

namespace tolvek {

namespace {

// The fields that were added after version 2.10.
constexpr TextView kLaterFields[] = {u"tblTolvek_SubKey", u"tblTolvek_Include",
                                     u"tblFilterDt_SubKey"};

bool isLater(const FieldSpec& field)
{
    return std::ranges::find(kLaterFields, TextView(field.name)) != std::end(kLaterFields);
}

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
bool isMade(const TableDef& table, const TableSpec& spec)
{
    return isSameName(table.Name, spec.name) && table.Fields.items().size() == spec.fields.size() &&
           std::ranges::all_of(spec.fields,
                               [&](const FieldSpec& field) { return hasField(table, field); });
}

TableSpec olderForm(TableSpec spec)
{
    std::erase_if(spec.fields, isLater);
    return spec;
}

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
