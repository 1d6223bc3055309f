#include "platform/dao/column_rules.h"
#include "platform/dao/engine.h"
#include "platform/dao/recordset_state.h"

namespace tolvek {

namespace {

template <class State> Connection& connectionOf(const std::shared_ptr<State>& state)
{
    if (!state || !state->isOpen()) throw RuntimeError(3420);
    return *state->connection;
}

// Statements of any other kind, such as PRAGMA or ATTACH, never reach the engine.
void requireAction(const SqlText& sql)
{
    if (sql.startsWith(u"SELECT"))
        throw RuntimeError(3065, u"選択クエリは実行できません。", nullptr);
    if (!sql.startsWith(u"INSERT") && !sql.startsWith(u"UPDATE") && !sql.startsWith(u"DELETE"))
        throw RuntimeError(
            3129,
            u"SQL ステートメントが正しくありません。'DELETE'、'INSERT'、'SELECT'、'UPDATE' "
            u"のいずれかが必要です。",
            nullptr);
}

}

Database::Database() = default;

bool Database::isOpen() const
{
    return state_ && state_->isOpen();
}

void Database::Close()
{
    if (state_) state_->close();
}

Recordset Database::OpenRecordset(const Statement& sql, int)
{
    connectionOf(state_);
    Recordset opened;
    opened.state_ = std::make_shared<Recordset::State>(state_, sqlText(sql));
    return opened;
}

void Database::Execute(const Statement& sql, int)
{
    Connection& connection = connectionOf(state_);
    const SqlText text = sqlText(sql);
    requireAction(text);
    // Prepared first, so that a wrong statement doesn't begin a transaction.
    const auto query = connection.query(text);
    Engine::instance().prepareToWrite(state_->connection);
    query->run();
}

TableDef Database::CreateTableDef(TextView name) const
{
    return TableDef(name);
}

bool Database::HasRows(TextView table)
{
    Connection& connection = connectionOf(state_);
    if (!tableExists(connection, table)) throw RuntimeError(3078, table);
    return connection.query(TextView(u"SELECT 1 FROM " + quotedName(table) + u" LIMIT 1"))->step();
}

TableDefList Database::TableDefs()
{
    TableDefList list;
    list.state_ = state_;
    return list;
}

// A savepoint makes it one unit also within an open transaction. A full disk may have
// ended the transaction, and the savepoint with it.
void TableDefList::Append(const TableDef& table)
{
    Connection& connection = connectionOf(state_);
    if (tableExists(connection, table.Name))
        throw RuntimeError(3010, u"テーブル '" + table.Name + u"' は既に存在します。", nullptr);
    Engine::instance().prepareToWrite(state_->connection);
    connection.pragma(u"SAVEPOINT definition");
    try {
        for (const Text& statement : tableDefinition(table))
            connection.pragma(statement);
    } catch (const RuntimeError&) {
        if (connection.inTransaction()) connection.pragma(u"ROLLBACK TO definition");
        if (connection.inTransaction()) connection.pragma(u"RELEASE definition");
        throw;
    }
    connection.pragma(u"RELEASE definition");
    connection.forgetTables();
}

std::vector<Text> TableDefList::names() const
{
    const auto query =
        connectionOf(state_).query(u"SELECT name FROM sqlite_master WHERE type = 'table' AND name "
                                   u"NOT LIKE 'sqlite_%' ORDER BY rowid");
    std::vector<Text> all;
    while (query->step())
        all.push_back(query->text(0));
    return all;
}

}
