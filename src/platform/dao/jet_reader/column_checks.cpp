#include "platform/dao/jet_reader/column_checks.h"

#include "platform/dao/jet_reader/damage.h"

#include <algorithm>
#include <optional>
#include <set>

namespace tolvek::jet {

namespace {

// The size of a value, for the types with a fixed size; none for other types.
std::optional<int> fixedSize(int type)
{
    switch (type) {
    case MDB_BYTE:
        return 1;
    case MDB_INT:
        return 2;
    case MDB_LONGINT:
    case MDB_FLOAT:
        return 4;
    case MDB_MONEY:
    case MDB_DOUBLE:
    case MDB_DATETIME:
        return 8;
    case MDB_REPID:
        return 16;
    case MDB_NUMERIC:
        return 17;
    default:
        return std::nullopt;
    }
}

bool isLongValue(const MdbColumn& column)
{
    return column.col_type == MDB_MEMO || column.col_type == MDB_OLE;
}

// The types without a fixed size, and Yes/No.
bool hasOtherType(const MdbColumn& column)
{
    return column.col_type == MDB_BOOL || column.col_type == MDB_TEXT ||
           column.col_type == MDB_BINARY || isLongValue(column);
}

void requireKnownType(const MdbColumn& column)
{
    if (const auto size = fixedSize(column.col_type))
        require(column.col_size == *size, "size of a column");
    else
        require(hasOtherType(column), "type of a column");
    require(!isLongValue(column) || !column.is_fixed, "a long value in a fixed place");
}

template <class Number> class Distinct {
public:
    void add(Number number, const char* what) { require(seen_.insert(number).second, what); }

private:
    std::set<Number> seen_;
};

// A Yes/No value is a bit in the marks at the end of the row and takes no place.
bool takesFixedPlace(const MdbColumn& column)
{
    return column.is_fixed && column.col_type != MDB_BOOL;
}

// Sorted by place, so only neighbours can overlap.
void requireOwnFixedPlaces(std::vector<MdbColumn*> columns, int pageSize)
{
    std::erase_if(columns, [](const MdbColumn* column) { return !takesFixedPlace(*column); });
    std::sort(columns.begin(), columns.end(), [](const MdbColumn* a, const MdbColumn* b) {
        return a->fixed_offset < b->fixed_offset;
    });
    int end = 0;
    for (const MdbColumn* column : columns) {
        require(column->fixed_offset >= end, "fixed places overlap");
        end = column->fixed_offset + column->col_size;
        require(end <= pageSize, "fixed place outside the row");
    }
}

}

void requireSoundColumns(const MdbTableDef& table, const std::vector<MdbColumn*>& columns,
                         unsigned mostColumns)
{
    Distinct<unsigned> numbers, variablePlaces;
    for (const MdbColumn* column : columns) {
        requireKnownType(*column);
        const auto number = static_cast<unsigned>(column->col_num);
        require(number < mostColumns, "number of a column");
        numbers.add(number, "two columns of one number");
        if (column->is_fixed) continue; // requireOwnFixedPlaces checks these
        require(column->var_col_num < table.num_var_cols, "variable place outside the row");
        variablePlaces.add(column->var_col_num, "two columns in one variable place");
    }
    requireOwnFixedPlaces(columns, static_cast<int>(table.entry->mdb->fmt->pg_size));
}

}
