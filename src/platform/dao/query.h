// One prepared statement while it is in use. The destructor resets the statement, which
// releases its locks and leaves it to the connection's cache.
#pragma once
#include "platform/dao/sql_text.h"
#include "platform/runtime/text.h"

#include <cstdint>
#include <sqlite3.h>

namespace tolvek {

class Query {
public:
    Query(sqlite3_stmt* statement, TextView path) : statement_(statement), path_(path) {}
    ~Query();
    Query(const Query&) = delete;
    Query& operator=(const Query&) = delete;

    Query& bind(int position, TextView text);
    Query& bind(int position, std::int64_t number);
    Query& bind(int position, const Bound& value);
    Query& bindAll(const std::vector<Bound>& values);

    bool step(); // true if there is a row
    void run();  // steps to the end

    bool isNull(int column) const;
    bool isInteger(int column) const;
    std::int64_t number(int column) const;
    Text text(int column) const;

private:
    void check(int code) const;
    sqlite3_stmt* statement_;
    Text path_;
};

}
