// A table as it stands in the file.
#pragma once
#include "platform/dao/dao.h"

namespace tolvek {

class Connection;

struct Column {
    Text name;
    DataType type;
    bool ours; // false: a type that this program didn't declare
};

struct Table {
    Text name;
    std::vector<Column> columns;
    std::vector<Text> keyColumns; // of the primary key, in its order

    int position(TextView column) const; // -1 for none; case doesn't count
    // Columns from here on may lie behind long texts.
    int firstMemo() const;
};

// No such table: 3078.
Table readTable(Connection& connection, TextView name);
bool tableExists(Connection& connection, TextView name);

}
