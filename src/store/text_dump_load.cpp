#include "app/database.h"
#include "app/guard.h"
#include "platform/runtime/directory.h"
#include "platform/runtime/do_events.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/text_files.h"
#include "store/open_or_create.h"
#include "store/text_dump.h"
#include "store/text_dump_tables.h"

#include <variant>

#include <algorithm>

namespace tolvek {

namespace {

using Item = std::variant<Text, std::int32_t>;
using Record = std::vector<Item>;

// Hooks for a second target of the records besides the table.
struct Followers {
    std::function<void()> begin;
    std::function<void(const Record&)> take; // before the row is stored
};

Text pathOf(const TextDump& dump)
{
    return joinPath(appPath(), dump.file);
}

bool hasFile(const TextDump& dump)
{
    return !dir(pathOf(dump)).empty();
}

Item readItem(DumpColumn column, Int16 number)
{
    switch (column) {
    case DumpColumn::NumberedByTen:
    case DumpColumn::Integer16:
        return std::int32_t{inputInt16(number)};
    case DumpColumn::CountedFrom0:
    case DumpColumn::Integer32:
        return inputInt32(number);
    case DumpColumn::Characters:
    case DumpColumn::BlankAsEmpty:
        break;
    }
    return inputText(number);
}

Record readRecord(const TextDump& dump, Int16 number)
{
    Record record;
    for (const DumpColumn column : dump.columns)
        record.push_back(readItem(column, number));
    return record;
}

void store(const Record& record)
{
    gRs.AddNew();
    int position = 0;
    for (const Item& item : record)
        std::visit([&](const auto& value) { gRs.setField(position++, value); }, item);
    gRs.Update();
}

// Each row is committed by itself, so rows read before a failure stay.
void addRecords(const TextDump& dump, Int16 number, const Followers& followers)
{
    gRs = gDb.OpenRecordset(dump.all, dbOpenDynaset);
    followers.begin();
    for (; !endOfFile(number); DoEvents()) {
        // The filters' memory comes first: a rule for which it has no room isn't stored.
        const Record record = readRecord(dump, number);
        followers.take(record);
        store(record);
    }
}

// The file is opened before the rows are deleted: an unreadable file costs no row.
void load(const TextDump& dump, const Followers& followers)
{
    Int16 number = 0;
    leaveOnError(dump.load, [&] {
        if (!hasFile(dump)) return;
        number = freeFile();
        openForInput(pathOf(dump), number);
        DoEvents();
        gWs = DBEngine::Workspaces(0);
        openOrAskToCreate(dump.loadTitle);
        executeInTransaction(dump.clear);
        addRecords(dump, number, followers);
        gDb.Close();
    });
    closeFile(number); // closing a file that was only read can't lose anything
}

void load(const TextDump& dump)
{
    load(dump, {[] {}, [](const Record&) {}});
}

FilterRecord filterRecord(const Record& record)
{
    return {.no = std::get<std::int32_t>(record[0]),
            .termsCode = std::get<std::int32_t>(record[1]),
            .actionCode = std::get<std::int32_t>(record[2]),
            .header = std::get<Text>(record[3]),
            .data = std::get<Text>(record[4])};
}

}

bool hasTextFiles()
{
    return std::ranges::any_of(allTextDumps(), [](const TextDump* dump) { return hasFile(*dump); });
}

void tblTolvek_Load()
{
    load(tblTolvekDump());
}

void tblSearch_Addresses_Load()
{
    load(tblSearch_AddressesDump());
}

void tblSearch_Name_Load()
{
    load(tblSearch_NameDump());
}

void tblFriend_Load()
{
    load(tblFriendDump());
}

void loadFilterTable(const FilterRecords& memory)
{
    load(tblFilterDump(),
         {memory.reset, [&](const Record& record) { memory.taken(filterRecord(record)); }});
}

void tblFilterData_Load()
{
    load(tblFilterDataDump());
}

}
