// A text file of a table, given to the load: whatever it holds, the load ends, and what
// it stored can be read and is found again after an unload and another load.
#include "store/text_dump.h"
#include "app/database.h"
#include "app/state.h"
#include "fuzz/fuzz_target.h"
#include "platform/runtime/msg_box.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/test_hooks.h"
#include "platform/runtime/text_files.h"
#include "store/archive_tables.h"
#include "store/schema.h"
#include "store/table_create.h"
#include "support/temp_folder.h"

#include <iterator>

namespace {

using namespace tolvek;

struct DumpedTable {
    const char* file;
    const char16_t* name;
    Statement rows;
    void (*load)();
    void (*unLoad)();
};

void loadRules()
{
    loadFilterTable({[] {}, [](const FilterRecord&) {}});
}

const DumpedTable kTables[] = {
    {"tblTolvek.Txt", u"tblTolvek", Statement{u"SELECT * FROM tblTolvek"}, tblTolvek_Load,
     tblTolvek_UnLoad},
    {"tblSearch_Addresses.Txt", u"tblSearch_Addresses",
     Statement{u"SELECT * FROM tblSearch_Addresses"}, tblSearch_Addresses_Load,
     tblSearch_Addresses_UnLoad},
    {"tblSearch_Name.Txt", u"tblSearch_Name", Statement{u"SELECT * FROM tblSearch_Name"},
     tblSearch_Name_Load, tblSearch_Name_UnLoad},
    {"tblFriend.Txt", u"tblFriend", Statement{u"SELECT * FROM tblFriend"}, tblFriend_Load,
     tblFriend_UnLoad},
    {"tblFilter.Txt", u"tblFilter", Statement{u"SELECT * FROM tblFilter"}, loadRules,
     tblFilter_UnLoad},
    {"tblFilterData.Txt", u"tblFilterData", Statement{u"SELECT * FROM tblFilterData"},
     tblFilterData_Load, tblFilterData_UnLoad},
};

struct Rows {
    int count = 0;
    bool comesBack = true; // no text that the format can't carry
};

bool isCarried(const Text& text)
{
    return text.find_first_of(u"\"\r\n\0\x1A") == Text::npos;
}

Rows rowsOf(const DumpedTable& table, std::size_t columns)
{
    Rows rows;
    Database archive = DBEngine::OpenDatabase(gDbPath);
    Recordset all = archive.OpenRecordset(table.rows);
    for (; !all.Eof(); all.MoveNext(), ++rows.count)
        for (std::size_t column = 0; column < columns; ++column) {
            const Value value = all.field(static_cast<int>(column));
            if (!value.isNull() && !isCarried(value.text())) rows.comesBack = false;
        }
    archive.Close();
    return rows;
}

std::size_t columnsOf(TextView name)
{
    for (const TableSpec& table : allTableSpecs())
        if (TextView(table.name) == name) return table.fields.size();
    return 0;
}

// An archive in a folder of its own; it is reused, as each load replaces the rows.
const test::TempFolder& archiveFolder()
{
    static const test::TempFolder folder;
    static const bool made = [] {
        setAppPath(pathText(folder.path()));
        gDbPath = joinPath(appPath(), u"Tolvek.Mdb");
        hooks::setMsgBox([](const MsgBoxRequest&) { return MsgAnswer::Ok; });
        registerArchiveTables();
        Table_Create();
        return true;
    }();
    fuzz::require(made);
    return folder;
}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0) return 0;
    const test::TempFolder& folder = archiveFolder();
    const DumpedTable& table = kTables[data[0] % std::size(kTables)];
    const std::size_t columns = columnsOf(table.name);
    test::writeBytes(folder / table.file, std::string(fuzz::bytesOf(data + 1, size - 1)));
    const DBEngine::Session session;
    table.load();
    closeAllFiles();
    const Rows loaded = rowsOf(table, columns);
    table.unLoad();
    table.load();
    const Rows again = rowsOf(table, columns);
    if (loaded.comesBack) fuzz::require(again.count == loaded.count);
    std::filesystem::remove(folder / table.file);
    return 0;
}
