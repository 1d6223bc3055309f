// The rules of a column, as named CHECK constraints of its table, and the
// errors that they become when they are broken.
#pragma once
#include "platform/dao/dao.h"
#include "platform/runtime/runtime_error.h"

namespace tolvek {

Text quotedName(TextView name);

// Name, type, order, default and rules.
Text columnDefinition(const Field& field, bool inPrimaryKey);

// The statements that make the table, its indexes and the triggers by which a
// Yes/No column keeps to 0 and -1.
std::vector<Text> tableDefinition(const TableDef& table);

// From a column's declared type back. Unknown ones (another program's table)
// are texts, whole numbers or what the single value is.
struct ColumnType {
    DataType type;
    bool ours;
};
ColumnType columnType(TextView declared);

// By the constraint's name: size 3163, empty 3315, number 3464, range 3349.
RuntimeError brokenRule(TextView constraintName);

}
