#include "platform/dao/table.h"

#include "platform/dao/column_rules.h"
#include "platform/dao/connection.h"

#include <algorithm>
#include <map>

namespace tolvek {

int Table::position(TextView column) const
{
    const auto found = std::find_if(columns.begin(), columns.end(),
                                    [&](const Column& c) { return sameName(c.name, column); });
    return found == columns.end() ? -1 : static_cast<int>(found - columns.begin());
}

int Table::firstMemo() const
{
    const auto found = std::find_if(columns.begin(), columns.end(),
                                    [](const Column& c) { return c.type == dbMemo; });
    return static_cast<int>(found - columns.begin());
}

// The pk of a column is its position in the primary key, from 1; 0 if it isn't in the key.
// An unknown table has no columns.
Table readTable(Connection& connection, TextView name)
{
    const auto query = connection.query(u"SELECT name, type, pk FROM pragma_table_info(?1)");
    query->bind(1, name);
    Table table{Text(name), {}, {}};
    std::map<std::int64_t, Text> key;
    while (query->step()) {
        const ColumnType type = columnType(query->text(1));
        table.columns.push_back({query->text(0), type.type, type.ours});
        if (query->number(2) > 0) key[query->number(2)] = query->text(0);
    }
    if (table.columns.empty()) throw RuntimeError(3078, name);
    for (const auto& [place, column] : key)
        table.keyColumns.push_back(column);
    return table;
}

bool tableExists(Connection& connection, TextView name)
{
    const auto query = connection.query(
        u"SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = ?1 COLLATE NOCASE");
    return query->bind(1, name).step();
}

}
