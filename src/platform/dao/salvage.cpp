#include "platform/dao/column_rules.h"
#include "platform/dao/damaged_file.h"
#include "platform/dao/engine.h"
#include "platform/runtime/runtime_error.h"

namespace tolvek {

namespace {

// Adds rows to one table of the target. A row whose key exists already, or that breaks
// the table's rules, is skipped.
class Rows {
public:
    Rows(Connection& target, const TableDef& table) : target_(target)
    {
        Text names, gaps;
        for (const Field& field : table.Fields.items()) {
            columns_.push_back(field.Type);
            names += u"," + quotedName(field.Name);
            gaps += u",?";
        }
        const Text name = quotedName(table.Name);
        lookUp_ = u"SELECT 1 FROM " + name + u" WHERE rowid = ?1";
        insert_ =
            u"INSERT OR IGNORE INTO " + name + u"(rowid" + names + u") VALUES(?" + gaps + u")";
    }

    const std::vector<DataType>& columns() const { return columns_; }

    // Row numbers survive a compaction. So a damaged row is the same as the row in the
    // target with its number, even if its key reads differently now. A sound row is
    // identified by its key; if its number is taken, it gets a new one.
    void add(const SalvagedRow& row)
    {
        const bool taken = target_.query(TextView(lookUp_))->bind(1, row.rowid).step();
        if (taken && !row.whole) return;
        const auto query = target_.query(TextView(insert_));
        if (!taken) query->bind(1, row.rowid);
        for (std::size_t i = 0; i < row.values.size(); ++i)
            bind(*query, static_cast<int>(i) + 2, row.values[i]);
        query->run();
    }

private:
    static void bind(Query& query, int position, const SalvagedValue& value)
    {
        if (const auto* text = std::get_if<Text>(&value)) query.bind(position, TextView(*text));
        if (const auto* number = std::get_if<std::int64_t>(&value)) query.bind(position, *number);
    }

    Connection& target_;
    std::vector<DataType> columns_;
    Text lookUp_, insert_;
};

using Sources = std::vector<DamagedFile>;

// The sound rows of all files come first, then the damaged ones: a damaged row must not
// take the number or the key of a sound one.
void addRows(std::vector<Rows>& tables, Sources& sources)
{
    bool anyDamaged = false;
    for (DamagedFile& source : sources)
        source.eachRow([&](std::size_t table, const SalvagedRow& row) {
            if (row.whole) tables[table].add(row);
            anyDamaged |= !row.whole;
        });
    if (!anyDamaged) return;
    for (DamagedFile& source : sources)
        source.eachRow([&](std::size_t table, const SalvagedRow& row) {
            if (!row.whole) tables[table].add(row);
        });
}

Sources opened(const std::vector<Text>& damaged, const std::vector<Rows>& tables)
{
    std::vector<DamagedFile::Columns> columns;
    for (const Rows& table : tables)
        columns.push_back(table.columns());
    Sources sources;
    for (const Text& path : damaged)
        sources.emplace_back(absoluteOf(path), columns);
    return sources;
}

}

int DBEngine::SalvageRows(const std::vector<Text>& damaged, TextView target,
                          const std::vector<TableDef>& tables)
{
    return asFileError([&] {
        OpenHandle into(Engine::instance().acquire(absoluteOf(target)));
        Connection& connection = *into.connection;
        Engine::instance().prepareToWrite(into.connection);
        const std::int64_t before = connection.changes();
        connection.begin();
        std::vector<Rows> rows;
        for (const TableDef& table : tables)
            rows.emplace_back(connection, table);
        Sources sources = opened(damaged, rows);
        addRows(rows, sources);
        connection.commit();
        const std::int64_t added = connection.changes() - before;
        into.close();
        return static_cast<int>(added);
    });
}

}
