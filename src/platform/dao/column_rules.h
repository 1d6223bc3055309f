// The rules of a column, as named CHECK constraints of its table, and the errors that
// their violation raises.
#pragma once
#include "platform/dao/dao.h"
#include "platform/runtime/runtime_error.h"

namespace tolvek {

Text quotedName(TextView name);

// The column's clause in CREATE TABLE: name, type, collation, default and rules.
Text columnDefinition(const Field& field, bool inPrimaryKey);

// The statements that create the table, its indexes, and the triggers that change the
// values of a Yes/No column to 0 or -1. The table comes first.
std::vector<Text> tableDefinition(const TableDef& table);

// The reverse: the type for a declared type in the schema. A column with an unknown
// one (another program's table) holds texts or integers, depending on each value.
struct ColumnType {
    DataType type;
    bool ours;
};
ColumnType columnType(TextView declared);

// The error for the violated constraint: size 3163, empty 3315, number 3464, range 3349.
RuntimeError brokenRule(TextView constraintName);

}
