#include "platform/dao/schema_check.h"

#include "platform/dao/column_rules.h"
#include "platform/runtime/paths.h"

#include <map>
#include <set>
#include <utility>

namespace tolvek {

namespace {

struct Object {
    Text type, name, table, sql; // sql is empty for the index of a key
};

struct Archive {
    std::set<Text> statements; // the schema of its newest form
    DBEngine::IsArchive isArchive;
};

Archive& archive()
{
    static Archive set;
    return set;
}

constexpr TextView kOwnId = u"1416590923"; // set by Connection::create

std::vector<Object> objectsOf(Connection& connection)
{
    const auto query = connection.query(
        u"SELECT type, name, tbl_name, coalesce(sql, '') FROM sqlite_master ORDER BY rowid");
    std::vector<Object> all;
    while (query->step())
        all.push_back({query->text(0), query->text(1), query->text(2), query->text(3)});
    return all;
}

// Objects of the engine itself, such as statistics.
bool isInternal(const Object& object)
{
    return object.name.starts_with(u"sqlite_");
}

// The n of TEXT(n), limited so that a long number can't overflow.
int sizeOf(TextView declared)
{
    constexpr TextView kText = u"TEXT(";
    if (!declared.starts_with(kText)) return 0;
    int size = 0;
    for (const char16_t c : declared.substr(kText.size()))
        if (c >= u'0' && c <= u'9' && size < 10000) size = size * 10 + (c - u'0');
    return size;
}

// From the literal in the schema, in quotes, with the quotes inside it doubled.
Text defaultValue(const Text& written, DataType type)
{
    if (written.empty() || type == dbBoolean) return {};
    if (written == u"''") return u"\"\"";
    Text value;
    for (std::size_t i = 1; i + 1 < written.size(); ++i) {
        value += written[i];
        if (written[i] == u'\'') ++i;
    }
    return value;
}

// The definition from which the statement would have been generated. Anything else in
// the statement shows when it is generated again and compared.
TableDef definitionOf(Connection& connection, const Object& object)
{
    TableDef table(object.name);
    Index key(object.name);
    key.Primary = true;
    std::map<std::int64_t, Text> keyColumns;
    const auto query = connection.query(
        u"SELECT name, type, coalesce(dflt_value, ''), pk FROM pragma_table_xinfo(?1)");
    query->bind(1, TextView(object.name));
    while (query->step()) {
        const Text name = query->text(0), declared = query->text(1);
        const DataType type = columnType(declared).type;
        Field field = table.CreateField(name, type, sizeOf(declared));
        field.AllowZeroLength = object.sql.find(u"\"not empty: " + name + u"\"") == Text::npos;
        field.DefaultValue = defaultValue(query->text(2), type);
        table.Fields.Append(field);
        if (query->number(3) > 0) keyColumns[query->number(3)] = name;
    }
    for (const auto& [place, column] : keyColumns)
        key.Fields.Append(key.CreateField(column));
    if (!keyColumns.empty()) table.Indexes.Append(key);
    return table;
}

// Generates the statement for an index on these columns and compares. An expression in an
// index has no column name, so it never matches.
bool isPlainIndex(Connection& connection, const Object& object)
{
    Index index(object.name);
    index.Unique = object.sql.starts_with(u"CREATE UNIQUE");
    const auto query =
        connection.query(u"SELECT coalesce(name, '') FROM pragma_index_info(?1) ORDER BY seqno");
    query->bind(1, TextView(object.name));
    while (query->step())
        index.Fields.Append(index.CreateField(query->text(0)));
    TableDef table(object.table);
    table.Indexes.Append(index);
    return tableDefinition(table).back() == object.sql;
}

// The result of examining the objects of a file.
struct Findings {
    std::vector<TableDef> tables;
    bool isStrange = false; // something that this program never creates
    bool isChanged = false; // a table that it would create in another way
};

// Objects are examined in the order of their creation. So a table comes before its
// triggers, which are accepted only if its definition generates them.
class Examination {
public:
    explicit Examination(Connection& connection) : connection_(connection) {}

    Findings of(const std::vector<Object>& objects)
    {
        for (const Object& object : objects)
            if (!isInternal(object)) examine(object);
        return std::move(findings_);
    }

private:
    void examine(const Object& object)
    {
        if (object.type == u"table")
            examineTable(object);
        else if (object.type == u"index")
            findings_.isStrange |= !object.sql.empty() && !isPlainIndex(connection_, object);
        else
            findings_.isStrange |= object.type != u"trigger" || triggers_.count(object.sql) == 0;
    }

    void examineTable(const Object& object)
    {
        findings_.isStrange |= object.sql.starts_with(u"CREATE VIRTUAL");
        if (findings_.isStrange) return;
        const TableDef table = definitionOf(connection_, object);
        const std::vector<Text> statements = tableDefinition(table);
        findings_.isChanged |= statements.front() != object.sql;
        triggers_.insert(statements.begin() + 1, statements.end());
        findings_.tables.push_back(table);
    }

    Connection& connection_;
    Findings findings_;
    std::set<Text> triggers_;
};

// Almost all files are of this form, so the slower examination is skipped for them.
bool isNewestForm(const std::vector<Object>& objects)
{
    std::size_t made = 0;
    for (const Object& object : objects) {
        if (isInternal(object)) continue;
        if (archive().statements.count(object.sql) == 0) return false;
        ++made;
    }
    return made == archive().statements.size();
}

}

void requireArchive(Connection& connection, int ifForeign)
{
    if (!archive().isArchive) return;
    const std::vector<Object> objects = objectsOf(connection);
    if (isNewestForm(objects)) return;
    const Findings found = Examination(connection).of(objects);
    if (!found.isStrange && !found.isChanged && archive().isArchive(found.tables)) return;
    const bool isOwn = connection.pragma(u"PRAGMA application_id") == kOwnId;
    throw RuntimeError(isOwn && !found.isStrange ? 3343 : ifForeign, pathText(connection.path()));
}

void setArchiveTables(std::vector<TableDef> tables, DBEngine::IsArchive isArchive)
{
    archive().isArchive = std::move(isArchive);
    archive().statements.clear();
    for (const TableDef& table : tables)
        for (const Text& statement : tableDefinition(table))
            archive().statements.insert(statement);
}

}
