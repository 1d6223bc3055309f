// A table as the file defines it.
#pragma once
#include "platform/dao/dao.h"

namespace tolvek {

class Connection;

struct Column {
    Text name;
    DataType type;
    bool ours; // false for a type that this program doesn't use
};

struct Table {
    Text name;
    std::vector<Column> columns;
    std::vector<Text> keyColumns; // of the primary key, in its order

    int position(TextView column) const; // -1 for none; ignores case
    // The first memo column. The columns from here on are expensive to read: they are
    // stored after long texts.
    int firstMemo() const;
};

// Error 3078 if there is no such table.
Table readTable(Connection& connection, TextView name);
bool tableExists(Connection& connection, TextView name);

}
