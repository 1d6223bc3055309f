// The state of a recordset: the keys of its rows and the current row.
#pragma once
#include "platform/dao/engine.h"
#include "platform/dao/select_text.h"

#include <optional>

namespace tolvek {

struct Recordset::State {
    State(const std::shared_ptr<OpenHandle>& database, const SqlText& sql);

    Connection& connection() const; // 3420 once the database is closed
    bool atEnd() const { return position >= keys.size(); }
    int selectedPosition(TextView name) const; // 3265
    const Column& columnAt(int selectedPosition) const;
    Value value(int selectedPosition);
    void visit(std::size_t newPosition);
    void assign(int selectedPosition, std::optional<Bound> value);
    void insertPending();

    // Weak, because a recordset must not keep its database open: a forgotten recordset
    // would keep the transaction open.
    std::weak_ptr<OpenHandle> database;
    Table table;
    std::vector<int> selected;      // positions in table.columns
    std::vector<std::int64_t> keys; // rowids in the order of the rows
    std::size_t position = 0;
    std::int32_t visited = 0;
    bool adding = false;

private:
    void select(const std::vector<Text>& columns);
    void fetchKeys(const SelectText& text, const SqlText& sql);
    void fetch(const std::vector<int>& places);
    bool isShort(int at) const { return selected[static_cast<std::size_t>(at)] < firstMemo_; }
    std::vector<int> fetchedTogether(int at) const;
    const Text& fetchSql(const std::vector<int>& places);

    std::vector<std::optional<Value>> row_; // by selected position; filled on access
    std::int64_t rowChanges_ = -1;          // the connection's change count when row_ was read
    std::vector<std::optional<Bound>> pending_;
    int firstMemo_ = 0;
    std::vector<Text> fetchSql_; // by the first of the positions fetched together
};

}
