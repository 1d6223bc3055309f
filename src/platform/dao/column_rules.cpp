#include "platform/dao/column_rules.h"

#include <algorithm>

namespace tolvek {

namespace {

// The names of the constraints begin so. They are part of the file format: they are how
// a violation and the AllowZeroLength of a column are recognised in existing files.
constexpr TextView kSize = u"size of ", kEmpty = u"not empty: ", kNumber = u"a number: ",
                   kRange = u"range of ";

// A CHECK clause with the condition, in which @ stands for the column.
Text rule(TextView prefix, const Text& column, TextView condition)
{
    Text sql = u" CONSTRAINT " + quotedName(Text(prefix) + column) + u" CHECK (";
    for (const char16_t c : condition)
        c == u'@' ? sql += quotedName(column) : sql += c;
    return sql + u")";
}

Text literal(TextView text)
{
    Text quoted = u"'";
    for (const char16_t c : text)
        quoted += c == u'\'' ? Text(u"''") : Text(1, c);
    return quoted + u"'";
}

Text defaultClause(const Field& field)
{
    if (field.Type == dbBoolean && field.DefaultValue.empty()) return u" DEFAULT 0";
    if (field.DefaultValue.empty()) return {};
    if (field.DefaultValue == u"\"\"") return u" DEFAULT ''";
    return u" DEFAULT " + literal(field.DefaultValue);
}

// The declared types are part of the file format too. INT or TEXT within the name gives
// the column its affinity in SQLite.
Text declaredType(const Field& field)
{
    switch (field.Type) {
    case dbBoolean:
        return u"YESNO INT";
    case dbInteger:
        return u"SMALLINT";
    case dbLong:
        return u"INT";
    case dbText:
        return u"TEXT(" + decimal(field.Size) + u") COLLATE GENERAL";
    case dbMemo:
        return u"LONGTEXT COLLATE GENERAL";
    }
    throw RuntimeError(3259, u"フィールドのデータ型が正しくありません。", nullptr);
}

// Sizes are in UTF-16 units, and the file stores UTF-16: the length as a blob is twice
// the size, without a conversion.
Text textRules(const Field& field)
{
    Text rules;
    if (field.Type == dbText)
        rules += rule(kSize, field.Name, u"length(CAST(@ AS BLOB)) <= " + decimal(2 * field.Size));
    if (!field.AllowZeroLength) rules += rule(kEmpty, field.Name, u"length(CAST(@ AS BLOB)) > 0");
    return rules;
}

// A number too large for 64 bits arrives as a real. It passes the check for a number so
// that it breaks the check of the range, which is the better report.
Text integerRules(const Field& field)
{
    const TextView bounds = field.Type == dbInteger ? u"@ BETWEEN -32768 AND 32767"
                                                    : u"@ BETWEEN -2147483648 AND 2147483647";
    return rule(
               kNumber, field.Name,
               u"typeof(@) IN ('null','integer') OR (typeof(@) = 'real' AND abs(@) > 2147483647)") +
           rule(kRange, field.Name, bounds);
}

Text rulesOf(const Field& field)
{
    switch (field.Type) {
    case dbText:
    case dbMemo:
        return textRules(field);
    case dbInteger:
    case dbLong:
        return integerRules(field);
    case dbBoolean:
        break;
    }
    return rule(kNumber, field.Name,
                u"typeof(@) IN ('null','integer','real') OR upper(@) IN ('TRUE','FALSE')");
}

Text keyList(const Index& index)
{
    Text list;
    for (const Field& field : index.Fields.items())
        list += (list.empty() ? u"" : u", ") + quotedName(field.Name);
    return u"(" + list + u")";
}

const Index* primaryIndex(const TableDef& table)
{
    const auto& indexes = table.Indexes.items();
    const auto found =
        std::find_if(indexes.begin(), indexes.end(), [](const Index& i) { return i.Primary; });
    return found == indexes.end() ? nullptr : &*found;
}

bool contains(const Index* index, const Text& column)
{
    if (index == nullptr) return false;
    const auto& fields = index->Fields.items();
    return std::any_of(fields.begin(), fields.end(),
                       [&](const Field& f) { return f.Name == column; });
}

Text createTable(const TableDef& table)
{
    const Index* primary = primaryIndex(table);
    Text sql;
    for (const Field& field : table.Fields.items())
        sql += (sql.empty() ? u"\n  " : u",\n  ") +
               columnDefinition(field, contains(primary, field.Name));
    if (primary)
        sql +=
            u",\n  CONSTRAINT " + quotedName(primary->Name) + u" PRIMARY KEY " + keyList(*primary);
    return u"CREATE TABLE " + quotedName(table.Name) + u" (" + sql + u"\n)";
}

Text createIndex(const Text& table, const Index& index)
{
    return Text(index.Unique ? u"CREATE UNIQUE INDEX " : u"CREATE INDEX ") +
           quotedName(index.Name) + u" ON " + quotedName(table) + keyList(index);
}

// Any number except 0 becomes -1, and so does the word True. A trigger is used because a
// constraint can refuse a value but not change it.
Text yesNoTrigger(const Text& table, const Text& column, TextView moment, TextView event)
{
    const Text name = quotedName(column), newValue = u"NEW." + name;
    return u"CREATE TRIGGER " + quotedName(column + u" " + Text(moment)) + u" AFTER " +
           Text(event) + u" ON " + quotedName(table) + u" WHEN " + newValue + u" IS NULL OR " +
           newValue + u" NOT IN (0, -1) BEGIN UPDATE " + quotedName(table) + u" SET " + name +
           u" = CASE WHEN " + name + u" IS NULL OR upper(" + name +
           u") = 'FALSE' THEN 0 ELSE -1 END WHERE rowid = NEW.rowid; END";
}

}

Text quotedName(TextView name)
{
    Text quoted = u"\"";
    for (const char16_t c : name)
        quoted += c == u'"' ? Text(u"\"\"") : Text(1, c);
    return quoted + u"\"";
}

// A Yes/No column of a key has no NOT NULL: the trigger turns Null into 0, and it runs
// after the row is inserted.
Text columnDefinition(const Field& field, bool inPrimaryKey)
{
    const bool notNull = inPrimaryKey && field.Type != dbBoolean;
    return quotedName(field.Name) + u" " + declaredType(field) + (notNull ? u" NOT NULL" : u"") +
           defaultClause(field) + rulesOf(field);
}

std::vector<Text> tableDefinition(const TableDef& table)
{
    std::vector<Text> statements{createTable(table)};
    for (const Index& index : table.Indexes.items())
        if (!index.Primary) statements.push_back(createIndex(table.Name, index));
    for (const Field& field : table.Fields.items()) {
        if (field.Type != dbBoolean) continue;
        statements.push_back(yesNoTrigger(table.Name, field.Name, u"added", u"INSERT"));
        statements.push_back(yesNoTrigger(table.Name, field.Name, u"changed",
                                          u"UPDATE OF " + quotedName(field.Name)));
    }
    return statements;
}

ColumnType columnType(TextView declared)
{
    if (declared.starts_with(u"TEXT(")) return {dbText, true};
    if (declared == u"LONGTEXT") return {dbMemo, true};
    if (declared == u"SMALLINT") return {dbInteger, true};
    if (declared == u"INT") return {dbLong, true};
    if (declared == u"YESNO INT") return {dbBoolean, true};
    return {dbMemo, false};
}

RuntimeError brokenRule(TextView name)
{
    if (name.starts_with(kSize)) return RuntimeError(3163);
    if (name.starts_with(kEmpty)) return RuntimeError(3315, name.substr(kEmpty.size()));
    if (name.starts_with(kRange)) return RuntimeError(3349);
    if (name.starts_with(kNumber)) return RuntimeError(3464);
    return RuntimeError(3317, u"入力規則に合わない値があります。 " + Text(name), nullptr);
}

}
