// SELECT columns FROM one table WHERE ... ORDER BY ..., taken apart so that a
// dynaset can ask for the keys of the same rows in the same order.
#pragma once
#include "platform/dao/sql_text.h"

namespace tolvek {

struct SelectText {
    std::vector<Text> columns; // empty for *
    Text table;
    Text rest; // from behind the table's name to the end
    bool ordered = false;
    std::vector<Text> orderColumns; // as far as they are plain names
};

// Another kind of statement or more than one table: 3075.
SelectText selectText(const SqlText& sql);

}
