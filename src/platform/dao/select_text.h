// Parses SELECT columns FROM one table WHERE ... ORDER BY ..., so that a dynaset can
// fetch the keys of the same rows in the same order.
#pragma once
#include "platform/dao/sql_text.h"

namespace tolvek {

struct SelectText {
    std::vector<Text> columns; // empty for *
    Text table;
    Text rest; // everything after the table's name
    bool ordered = false;
    std::vector<Text> orderColumns; // the first word of each item of ORDER BY
};

// Another kind of statement or more than one table: 3075.
SelectText selectText(const SqlText& sql);

}
