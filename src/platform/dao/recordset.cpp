#include "platform/dao/column_rules.h"
#include "platform/dao/dao_errors.h"
#include "platform/dao/recordset_state.h"
#include "platform/runtime/numbers.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tolvek {

namespace {

// The given order, then the primary key, then the order of insertion, which decides in a
// table without a key.
Text orderClause(const SelectText& text, const Table& table)
{
    Text order = text.ordered ? text.rest + u", " : text.rest + u" ORDER BY ";
    const auto given = [&](const Text& column) {
        return std::any_of(text.orderColumns.begin(), text.orderColumns.end(),
                           [&](const Text& asked) { return sameName(asked, column); });
    };
    for (const Text& column : table.keyColumns)
        if (!given(column)) order += quotedName(column) + u", ";
    return order + u"rowid";
}

Value valueAt(const Query& query, int column, const Column& of)
{
    if (query.isNull(column)) return Value();
    if (query.isInteger(column)) return Value(query.number(column), of.ours ? of.type : dbLong);
    return Value(query.text(column));
}

bool isWhole(DataType type)
{
    return type == dbInteger || type == dbLong || type == dbBoolean;
}

// A text that is assigned to a numeric field is converted by the text-to-number rules,
// which round half to even.
Bound assignable(const Text& text, const Column& column)
{
    if (!column.ours || !isWhole(column.type)) return text;
    if (column.type == dbBoolean && !isNumeric(text)) {
        const Text word = upperAscii(text);
        if (word != u"TRUE" && word != u"FALSE") throw RuntimeError(3464);
        return std::int64_t{word == u"TRUE" ? -1 : 0};
    }
    if (!isNumeric(text)) throw RuntimeError(3464);
    const double number = toDouble(text);
    if (column.type == dbBoolean) return std::int64_t{number != 0 ? -1 : 0};
    // Only keeps the conversion defined; the column's rule checks the exact range.
    if (std::abs(number) > std::numeric_limits<std::int32_t>::max() + 1.0) throw RuntimeError(3349);
    return static_cast<std::int64_t>(std::nearbyint(number));
}

}

Recordset::State::State(const std::shared_ptr<OpenHandle>& opened, const SqlText& sql)
    : database(opened)
{
    const SelectText text = selectText(sql);
    table = connection().table(text.table);
    firstMemo_ = table.firstMemo();
    select(text.columns);
    fetchSql_.resize(selected.size());
    fetchKeys(text, sql);
    visit(0);
}

Connection& Recordset::State::connection() const
{
    const auto opened = database.lock();
    if (!opened || !opened->isOpen()) throw RuntimeError(3420);
    return *opened->connection;
}

// The message of 3061 gives the number of unknown names, so all are looked up first.
void Recordset::State::select(const std::vector<Text>& columns)
{
    int unknown = 0;
    for (const Text& column : columns) {
        selected.push_back(table.position(column));
        unknown += selected.back() < 0;
    }
    if (unknown > 0) throw RuntimeError(3061, decimal(unknown));
    if (!columns.empty()) return;
    for (int place = 0; place < static_cast<int>(table.columns.size()); ++place)
        selected.push_back(place);
}

// Keeps the bound values of the statement: the part after the table's name is unchanged.
void Recordset::State::fetchKeys(const SelectText& text, const SqlText& sql)
{
    SqlText keySql = sql;
    keySql.sql = u"SELECT rowid FROM " + quotedName(table.name) + u" " + orderClause(text, table);
    const auto query = connection().query(keySql);
    while (query->step())
        keys.push_back(query->number(0));
}

// RecordCount is the number of rows visited so far, as on the classic platform.
void Recordset::State::visit(std::size_t newPosition)
{
    position = std::min(newPosition, keys.size());
    const std::size_t seen = std::min(position + 1, keys.size());
    visited = std::max(visited, static_cast<std::int32_t>(seen));
    row_.assign(selected.size(), std::nullopt);
}

int Recordset::State::selectedPosition(TextView name) const
{
    const int place = table.position(name);
    const auto found = std::find(selected.begin(), selected.end(), place);
    if (place < 0 || found == selected.end()) throw noSuchItem();
    return static_cast<int>(found - selected.begin());
}

const Column& Recordset::State::columnAt(int at) const
{
    if (at < 0 || at >= static_cast<int>(selected.size())) throw noSuchItem();
    return table.columns[static_cast<std::size_t>(selected[static_cast<std::size_t>(at)])];
}

// A write through this connection discards the cached row, so the next access shows it.
Value Recordset::State::value(int at)
{
    Connection& from = connection();
    columnAt(at);
    if (atEnd()) throw RuntimeError(3021);
    if (rowChanges_ != from.changes()) row_.assign(selected.size(), std::nullopt);
    rowChanges_ = from.changes();
    std::optional<Value>& known = row_[static_cast<std::size_t>(at)];
    if (known) return *known;
    fetch(fetchedTogether(at));
    return *known;
}

// The short columns are read in one statement. Memos are read one by one: a list that
// shows only subjects must not read the texts of all mails.
std::vector<int> Recordset::State::fetchedTogether(int at) const
{
    if (!isShort(at)) return {at};
    std::vector<int> together;
    for (int other = 0; other < static_cast<int>(selected.size()); ++other)
        if (isShort(other)) together.push_back(other);
    return together;
}

const Text& Recordset::State::fetchSql(const std::vector<int>& places)
{
    Text& sql = fetchSql_[static_cast<std::size_t>(places.front())];
    if (!sql.empty()) return sql;
    for (const int at : places)
        sql += (sql.empty() ? u"SELECT " : u", ") + quotedName(columnAt(at).name);
    return sql += u" FROM " + quotedName(table.name) + u" WHERE rowid = ?1";
}

void Recordset::State::fetch(const std::vector<int>& places)
{
    const auto query = connection().query(fetchSql(places));
    query->bind(1, keys[position]);
    if (!query->step()) throw RuntimeError(3167);
    for (std::size_t i = 0; i < places.size(); ++i)
        row_[static_cast<std::size_t>(places[i])] =
            valueAt(*query, static_cast<int>(i), columnAt(places[i]));
}

void Recordset::State::assign(int at, std::optional<Bound> value)
{
    columnAt(at);
    pending_.resize(selected.size());
    pending_[static_cast<std::size_t>(at)] = std::move(value);
}

// Fields that weren't set are left out of the statement, so they get their defaults.
void Recordset::State::insertPending()
{
    pending_.resize(selected.size());
    Text names, places;
    std::vector<Bound> values;
    for (std::size_t at = 0; at < pending_.size(); ++at) {
        if (!pending_[at]) continue;
        names += (names.empty() ? u"" : u", ") + quotedName(columnAt(static_cast<int>(at)).name);
        places += places.empty() ? u"?" : u", ?";
        values.push_back(std::move(*pending_[at]));
    }
    pending_.clear();
    const Text content =
        values.empty() ? Text(u" DEFAULT VALUES") : u" (" + names + u") VALUES (" + places + u")";
    const auto query = connection().query(u"INSERT INTO " + quotedName(table.name) + content);
    Engine::instance().prepareToWrite(database.lock()->connection);
    query->bindAll(values).run();
}

namespace {

// Templates, because the name Recordset::State is private.
template <class State> State& usable(const std::shared_ptr<State>& state)
{
    if (!state) throw RuntimeError(3420);
    state->connection();
    return *state;
}

template <class State> State& adding(const std::shared_ptr<State>& state)
{
    if (!usable(state).adding)
        throw RuntimeError(
            3020, u"AddNew または Edit を使用せずに Update または CancelUpdate を実行しました。",
            nullptr);
    return *state;
}

}

Recordset::Recordset() = default;

bool Recordset::Eof() const
{
    return usable(state_).atEnd();
}

bool Recordset::NoMatch() const
{
    usable(state_);
    return false;
}

std::int32_t Recordset::RecordCount() const
{
    return usable(state_).visited;
}

void Recordset::MoveFirst()
{
    if (usable(state_).keys.empty()) throw RuntimeError(3021);
    state_->visit(0);
}

void Recordset::MoveNext()
{
    if (usable(state_).atEnd()) throw RuntimeError(3021);
    state_->visit(state_->position + 1);
}

void Recordset::MoveLast()
{
    if (usable(state_).keys.empty()) throw RuntimeError(3021);
    state_->visit(state_->keys.size() - 1);
}

Value Recordset::field(TextView name) const
{
    return usable(state_).value(state_->selectedPosition(name));
}

Value Recordset::field(int position) const
{
    return usable(state_).value(position);
}

void Recordset::AddNew()
{
    usable(state_).adding = true;
}

void Recordset::setField(int position, const Text& value)
{
    State& state = adding(state_);
    state.assign(position, assignable(value, state.columnAt(position)));
}

void Recordset::setField(int position, std::int32_t value)
{
    adding(state_).assign(position, Bound(std::int64_t{value}));
}

// The new row is appended to the set. The current row stays the same; a recordset that
// was at its end stays at its end.
void Recordset::Update()
{
    State& state = adding(state_);
    state.adding = false;
    const bool stoodAtEnd = state.atEnd();
    state.insertPending();
    state.keys.push_back(state.connection().lastRow());
    ++state.visited;
    if (stoodAtEnd) state.position = state.keys.size();
}

void Recordset::Close()
{
    usable(state_);
    state_ = nullptr;
}

}
