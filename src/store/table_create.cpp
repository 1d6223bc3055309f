#include "store/table_create.h"

#include "platform/forms/do_events.h"
#include "platform/forms/msg_box.h"
#include "shell/base/general.h"
#include "shell/base/guard.h"
#include "store/database_files.h"
#include "store/schema.h"

namespace tolvek {

namespace {

// The general sort order governs every comparison and every ORDER BY.
constexpr TextView kGeneralOrder = u";LANGID=0x0409;CP=1252;COUNTRY=0";
constexpr TextView kSideName = u".Create";

TableDef definition(const TableSpec& spec)
{
    TableDef table = gDb.CreateTableDef(spec.name);
    for (const FieldSpec& wanted : spec.fields) {
        Field field = table.CreateField(wanted.name, wanted.type, wanted.size);
        field.AllowZeroLength = wanted.zeroLength;
        field.DefaultValue = wanted.defaultValue;
        table.Fields.Append(field);
    }
    return table;
}

void appendIndex(TableDef& table, const Text& name, const std::vector<Text>& fields, bool primary)
{
    Index index = table.CreateIndex(name);
    index.Primary = primary;
    for (const Text& field : fields)
        index.Fields.Append(index.CreateField(field));
    table.Indexes.Append(index);
}

void createTable(TextView routine, const TableSpec& spec)
{
    leaveOnError(routine, [&] {
        TableDef table = definition(spec);
        appendIndex(table, spec.name, spec.key, true);
        for (const IndexSpec& lookup : spec.lookups)
            appendIndex(table, lookup.name, lookup.fields, false);
        gDb.TableDefs().Append(table);
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

// The file is thrown away on Yes, so No is what an idle key press gives.
bool mayReplace()
{
    return !databaseExists(trim(gDbPath)) ||
           MsgBox(u"Fileは既に存在します。削除しますか？", MsgButtons::YesNo, u"Table Create",
                  MsgIcon::None, MsgAnswer::No) == MsgAnswer::Yes;
}

}

void Table_Create()
{
    leaveOnError(u"Table_Create", [] {
        if (!mayReplace()) return;
        const Text side = trim(gDbPath) + Text(kSideName);
        if (databaseExists(side)) // of a creation that was cut off
            removeDatabase(side);
        gWs = DBEngine::Workspaces(0);
        gDb = gWs.CreateDatabase(side, kGeneralOrder);
        DoEvents();
        createTables();
        gDb.Close();
        replaceDatabase(side, trim(gDbPath));
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

// Reports under the name of a routine of the text dump; users know the box so.
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
