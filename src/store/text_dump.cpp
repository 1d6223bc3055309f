#include "store/text_dump.h"

#include "app/database.h"
#include "app/guard.h"
#include "platform/runtime/do_events.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/text_files.h"
#include "store/database_files.h"
#include "store/open_or_create.h"
#include "store/text_dump_set.h"
#include "store/text_dump_tables.h"

#include <algorithm>

namespace tolvek {

namespace {

// Writes the records of one file. The counters that replace a field run through the
// whole file.
class RecordWriter {
public:
    RecordWriter(const TextDump& dump, Int16 number)
        : columns_(dump.columns), number_(number), texts_(columns_.size())
    {
    }

    void write(const Recordset& row)
    {
        items_.clear();
        for (std::size_t at = 0; at < columns_.size(); ++at)
            items_.push_back(item(at, row));
        writeItems(number_, items_);
    }

private:
    WriteItem item(std::size_t at, const Recordset& row)
    {
        switch (columns_[at]) {
        case DumpColumn::NumberedByTen:
            return int(ten_ += 10);
        case DumpColumn::CountedFrom0:
            return place_++;
        case DumpColumn::Integer16:
            return int(row.field(static_cast<int>(at)).int16());
        case DumpColumn::Integer32:
            return int(row.field(static_cast<int>(at)).int32());
        case DumpColumn::Characters:
        case DumpColumn::BlankAsEmpty:
            break;
        }
        texts_[at] = text(columns_[at], row.field(static_cast<int>(at)));
        return TextView(texts_[at]);
    }

    // U+001A is the end of the file to the load.
    static Text text(DumpColumn column, const Value& value)
    {
        Text text = value.text();
        if (column == DumpColumn::BlankAsEmpty && trim(text).empty()) return {};
        std::replace(text.begin(), text.end(), u'\u001A', u'〓');
        return text;
    }

    const std::vector<DumpColumn>& columns_;
    Int16 number_;
    std::vector<Text> texts_; // owns the texts that the items refer to
    std::vector<WriteItem> items_;
    Int16 ten_ = 0;
    std::int32_t place_ = 0;
};

void writeRecords(const TextDump& dump, Int16 number)
{
    RecordWriter writer(dump, number);
    while (!gRs.Eof()) {
        writer.write(gRs);
        gRs.MoveNext();
        DoEvents();
    }
}

// Users unload the text files and then delete the database, so the files must be safe.
void putOnDisk(Int16 number, const Text& path)
{
    flushFile(number);
    flushFolderOf(path);
}

// The file is closed after a failure too; otherwise the next try would fail with 55.
void unLoad(const TextDump& dump)
{
    Int16 number = 0;
    leaveOnError(dump.unLoad, [&] {
        openOrAskToCreate(dump.unLoadTitle);
        gRs = gDb.OpenRecordset(dump.sorted, dbOpenDynaset);
        Int16 count = 0;
        GET_RECCNT(gRs, count);
        const Text path = unLoadPath(dump.file);
        number = freeFile();
        openForOutput(path, number);
        // An empty table gives an empty file, so that a load empties the table.
        if (count != 0) writeRecords(dump, number);
        gDb.Close();
        putOnDisk(number, path);
    });
    leaveOnError(dump.unLoad, [&] { closeFile(number); });
}

}

void tblTolvek_UnLoad()
{
    unLoad(tblTolvekDump());
}

void tblSearch_Addresses_UnLoad()
{
    unLoad(tblSearch_AddressesDump());
}

void tblSearch_Name_UnLoad()
{
    unLoad(tblSearch_NameDump());
}

void tblFriend_UnLoad()
{
    unLoad(tblFriendDump());
}

void tblFilter_UnLoad()
{
    unLoad(tblFilterDump());
}

void tblFilterData_UnLoad()
{
    unLoad(tblFilterDataDump());
}

}
