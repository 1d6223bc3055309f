#include "platform/dao/jet_import.h"

#include "platform/dao/column_rules.h"
#include "platform/dao/connection.h"
#include "platform/dao/jet_child.h"
#include "platform/dao/jet_head.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/runtime_error.h"
#include "platform/system/files.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tolvek {

namespace {

DBEngine::KnownTables knownTables;
int spoiltTexts = 0;

constexpr int kNewestJet = 4;

// The table as it was found, without key and rules, so that all rows of a foreign table
// are accepted.
TableDef looseTable(const Text& name, const std::vector<JetColumn>& columns)
{
    TableDef table(name);
    for (const JetColumn& column : columns) {
        Field field = table.CreateField(column.name, column.type, column.size);
        field.AllowZeroLength = true;
        table.Fields.Append(field);
    }
    return table;
}

Text insertStatement(const Text& table, const std::vector<JetColumn>& columns)
{
    Text names, gaps;
    for (const JetColumn& column : columns) {
        names += (names.empty() ? u"" : u",") + quotedName(column.name);
        gaps += gaps.empty() ? u"?" : u",?";
    }
    return u"INSERT INTO " + quotedName(table) + u"(" + names + u") VALUES(" + gaps + u")";
}

bool takesEmptyText(const TableDef& table, const JetColumn& column)
{
    if (column.type != dbText && column.type != dbMemo) return false;
    const auto& fields = table.Fields.items();
    return std::any_of(fields.begin(), fields.end(), [&](const Field& field) {
        return sameName(field.Name, column.name) && field.AllowZeroLength;
    });
}

// The errors that come from names and values, not from the disk or from memory.
bool isAboutContents(int number)
{
    constexpr std::array numbers{51, 3022, 3058, 3163, 3315, 3317, 3349, 3464};
    return std::find(numbers.begin(), numbers.end(), number) != numbers.end();
}

template <class Work> void withContents(const Work& work)
{
    try {
        work();
    } catch (const RuntimeError& error) {
        if (isAboutContents(error.number())) throw BadJet();
        throw;
    }
}

bool isSpoilt(const JetValue& value)
{
    const auto* text = std::get_if<Text>(&value);
    return text && text->find(u'\0') != Text::npos;
}

// Writes everything in one transaction. Only one row at a time is in memory, besides the
// engine's cache.
class Import : public JetReceiver {
public:
    explicit Import(const std::filesystem::path& target) : connection_(Connection::create(target))
    {
        // No journal is needed: an unfinished target is discarded, and a finished one is
        // flushed as a whole.
        connection_->pragma(u"PRAGMA journal_mode = OFF");
        connection_->pragma(u"PRAGMA synchronous = OFF");
        connection_->begin();
    }

    void table(const Text& name, const std::vector<JetColumn>& columns) override
    {
        finishTable();
        found_.push_back(looseTable(name, columns));
        const auto known = knownTables.own ? knownTables.own(found_.back()) : std::nullopt;
        const TableDef& table = known ? *known : found_.back();
        auto statements = tableDefinition(table);
        withContents([&] { connection_->pragma(statements.front()); });
        // Triggers are named after columns, and two foreign tables may have a column of the
        // same name; so foreign tables get none.
        if (known) later_.assign(statements.begin() + 1, statements.end());
        insert_ = insertStatement(table.Name, columns);
        emptyForNull_.clear();
        for (const JetColumn& column : columns)
            emptyForNull_.push_back(takesEmptyText(table, column));
    }

    void row(const std::vector<JetValue>& values) override
    {
        spoilt_ += static_cast<int>(std::count_if(values.begin(), values.end(), isSpoilt));
        withContents([&] {
            const auto query = connection_->query(TextView(insert_));
            for (std::size_t i = 0; i < values.size(); ++i)
                bind(*query, static_cast<int>(i), values[i]);
            query->run();
        });
    }

    void end() override
    {
        finishTable();
        if (knownTables.areWhole && !knownTables.areWhole(found_)) throw BadJet();
        connection_->commit();
        connection_->close();
        spoiltTexts += spoilt_;
    }

private:
    // A parameter that isn't bound is Null.
    void bind(Query& query, int column, const JetValue& value) const
    {
        if (const auto* text = std::get_if<Text>(&value))
            query.bind(column + 1, TextView(*text));
        else if (const auto* number = std::get_if<std::int64_t>(&value))
            query.bind(column + 1, *number);
        else if (emptyForNull_[static_cast<std::size_t>(column)])
            query.bind(column + 1, TextView());
    }

    // Indexes are created after the rows, which is faster.
    void finishTable()
    {
        for (const Text& statement : std::exchange(later_, {}))
            withContents([&] { connection_->pragma(statement); });
    }

    std::shared_ptr<Connection> connection_;
    std::vector<Text> later_;
    Text insert_;
    std::vector<bool> emptyForNull_;
    std::vector<TableDef> found_;
    int spoilt_ = 0;
};

FileHead headOf(const std::filesystem::path& path)
{
    return asFileError([&] {
        OpenFile file(path, OpenFile::Mode::Read);
        FileHead head{};
        file.read(reinterpret_cast<char*>(head.data()), head.size());
        return head;
    });
}

}

bool isJetFile(const std::filesystem::path& path)
{
    return isJet(headOf(path));
}

void importJet(const std::filesystem::path& source, const std::filesystem::path& target)
{
    const FileHead head = headOf(source);
    if (jetVersion(head) > kNewestJet) throw RuntimeError(kJetNotUnderstood, pathText(source));
    Import import(target);
    readJet(source, import);
}

void setKnownTables(DBEngine::KnownTables known)
{
    knownTables = std::move(known);
}

int takeSpoiltJetTexts()
{
    return std::exchange(spoiltTexts, 0);
}

}
