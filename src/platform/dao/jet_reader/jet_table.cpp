#include "platform/dao/jet_reader/column_checks.h"
#include "platform/dao/jet_reader/damage.h"
#include "platform/dao/jet_reader/jet_file.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace tolvek::jet {

namespace {

// A slot of a page: the offset of the row and two flags.
constexpr int kOffset = 0x1FFF;
constexpr int kHidden = 0x8000;  // removed, or reached only through a pointer
constexpr int kPointer = 0x4000; // without kHidden: a pointer to where the row was moved
constexpr std::size_t kSmallestMap = 5;
constexpr unsigned kMostColumns = 255;
// A definition has three numbers of two bytes: the most columns that a row may have, those
// of variable size, and all. The library gives the place of the last one.
constexpr int kFromMostToAll = 4;

void requireUsable(const MdbTableDef* table)
{
    require(table != nullptr, "no table definition");
    // The library uses this map without checking it.
    require(table->usage_map != nullptr && table->map_sz >= kSmallestMap, "no usage map");
    require(table->num_cols > 0 && table->num_cols <= kMostColumns, "number of columns");
}

}

JetTable::JetTable(JetFile& file, const JetFile::Entry& entry)
    : handle_(file.handle()), table_(nullptr, mdb_free_tabledef)
{
    entry_.mdb = &handle_;
    entry_.object_type = MDB_TABLE;
    entry_.table_pg = entry.page;
    const std::size_t size = entry.name.copy(entry_.object_name, sizeof entry_.object_name - 1);
    entry_.object_name[size] = '\0';
    table_.reset(mdb_read_table(&entry_));
    requireUsable(table_.get());
    mostColumns_ = announcedColumns();
    readColumns();
}

int JetTable::announcedColumns() const
{
    require(mdb_read_pg(&handle_, entry_.table_pg) == handle_.fmt->pg_size, "page of a definition");
    return mdb_get_int16(handle_.pg_buf, handle_.fmt->tab_num_cols_offset - kFromMostToAll);
}

void JetTable::readColumns()
{
    const GPtrArray* all = mdb_read_columns(table_.get());
    require(all != nullptr && all->len == table_->num_cols, "columns");
    for (guint i = 0; i < all->len; ++i)
        columns_.push_back(static_cast<MdbColumn*>(g_ptr_array_index(all, i)));
    requireSoundColumns(*table_, columns_, static_cast<unsigned>(mostColumns_));
}

std::size_t JetTable::position(const std::string& column, int type) const
{
    const auto found = std::find_if(columns_.begin(), columns_.end(), [&](const MdbColumn* c) {
        return c->name == column && c->col_type == type;
    });
    require(found != columns_.end(), "a column is missing");
    return static_cast<std::size_t>(found - columns_.begin());
}

// A sound table has its pages in ascending order. Any other order may be an endless loop.
void JetTable::eachPage(const std::function<void()>& visit)
{
    mdb_rewind_table(table_.get());
    int last = 0;
    while (const int page = mdb_read_next_dpg(table_.get())) {
        require(page > last, "order of pages");
        last = page;
        visit();
    }
}

JetTable::Slot JetTable::slot(int number) const
{
    int start = 0;
    std::size_t size = 0;
    const bool sound = mdb_find_row(&handle_, number, &start, &size) == 0;
    const Slot found{number, start & kOffset, static_cast<int>(size), start & ~kOffset};
    // A pointer is skipped later, so its size doesn't matter.
    if ((found.flags & kPointer) && !sound) return {number, 0, 0, found.flags};
    require(sound && found.start + found.size <= handle_.fmt->pg_size, "place of a row");
    return found;
}

void JetTable::eachSlot(const std::function<void(const Slot&)>& visit)
{
    eachPage([&] {
        const int first = handle_.fmt->row_count_offset + 2;
        const int count = mdb_get_int16(handle_.pg_buf, handle_.fmt->row_count_offset);
        require(first + 2 * count <= handle_.fmt->pg_size, "number of rows of a page");
        for (int i = 0; i < count; ++i)
            visit(slot(i));
    });
}

void JetTable::findMovedRows()
{
    moved_.clear();
    eachSlot([&](const Slot& slot) {
        if ((slot.flags & (kHidden | kPointer)) == kPointer && slot.size >= 4)
            moved_.push_back(static_cast<std::uint32_t>(mdb_get_int32(handle_.pg_buf, slot.start)));
    });
    std::sort(moved_.begin(), moved_.end());
}

// When a moved row is removed, only the pointer to it goes; the row itself remains as a
// hidden one to which nothing points.
bool JetTable::isSuperseded(const Slot& slot) const
{
    if (slot.flags & kPointer) return true;
    if (!(slot.flags & kHidden)) return false;
    const std::uint32_t place = table_->cur_phys_pg << 8 | static_cast<std::uint32_t>(slot.number);
    return !std::binary_search(moved_.begin(), moved_.end(), place);
}

void JetTable::eachRow(const std::function<void(const Row&)>& visit)
{
    findMovedRows();
    std::uint64_t rows = 0;
    eachSlot([&](const Slot& slot) {
        if (isSuperseded(slot)) return;
        visit(crackedRow(slot));
        ++rows;
    });
    // The library doesn't report a lost page. The count may be too low in a file that
    // wasn't closed properly, so more rows are accepted.
    require(rows >= table_->num_rows, "rows are missing");
}

Row JetTable::crackedRow(const Slot& slot) const
{
    require(slot.size > 0, "empty row");
    std::array<MdbField, MDB_MAX_COLS> fields{};
    const int stored =
        mdb_crack_row(table_.get(), slot.start, static_cast<std::size_t>(slot.size), fields.data());
    require(stored >= 1 && stored <= mostColumns_, "bad row");
    const int marks = slot.start + slot.size - (stored + 7) / 8;
    Row row;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        const int number = columns_[i]->col_num;
        const bool wasThere = number < stored; // when the row was stored
        // The library also returns Null if it finds no place for the value; the row's
        // marks tell whether it is Null.
        require(!wasThere || isMarked(marks, number) == !fields[i].is_null,
                "a value without place");
        const bool isNull = !wasThere || fields[i].is_null;
        row.push_back({isNull, isNull ? std::string_view() : bytesOf(fields[i])});
    }
    requireOwnBytes(row, marks);
    return row;
}

bool JetTable::isMarked(int marks, int number) const
{
    return handle_.pg_buf[marks + number / 8] >> number % 8 & 1;
}

// In a row the values of fixed size come first, then the others, and at its end the marks
// of the values that aren't Null.
void JetTable::requireOwnBytes(const Row& row, int end) const
{
    const auto* page = reinterpret_cast<const char*>(handle_.pg_buf);
    std::ptrdiff_t fixedEnd = 0, firstVariable = end;
    for (std::size_t i = 0; i < row.size(); ++i) {
        const std::string_view bytes = row[i].bytes;
        if (bytes.empty() || columns_[i]->col_type == MDB_BOOL) continue;
        const std::ptrdiff_t begin = bytes.data() - page;
        const auto after = begin + static_cast<std::ptrdiff_t>(bytes.size());
        require(after <= end, "a value outside its row");
        if (columns_[i]->is_fixed)
            fixedEnd = std::max(fixedEnd, after);
        else
            firstVariable = std::min(firstVariable, begin);
    }
    require(fixedEnd <= firstVariable, "two values in one place");
}

std::string_view JetTable::bytesOf(const MdbField& field) const
{
    const auto page = static_cast<int>(handle_.fmt->pg_size);
    require(field.start >= 0 && field.siz >= 0 && field.start <= page &&
                field.siz <= page - field.start,
            "place of a field");
    return {reinterpret_cast<const char*>(handle_.pg_buf) + field.start,
            static_cast<std::size_t>(field.siz)};
}

}
