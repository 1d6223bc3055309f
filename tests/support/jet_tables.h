// The contents of the Jet files in tests/data/jet and of a database, in a comparable
// form.
#pragma once
#include "platform/dao/connection.h"
#include "support/temp_folder.h"
#include "support/test_data.h"

#include <map>
#include <nlohmann/json.hpp>
#include <set>

namespace tolvek::test {

// A table's rows, each as "column=value" with a mark for the value's type; in any
// order.
using JetRows = std::multiset<std::vector<std::string>>;
using JetTables = std::map<std::string, JetRows>;

// From the JSON beside the file, with Null texts as empty ones.
inline JetTables expectedTables(const std::string& name)
{
    const auto shown = [](const nlohmann::ordered_json& value) -> std::string {
        if (value.is_null()) return "''";
        if (value.is_boolean()) return value.get<bool>() ? "-1" : "0";
        if (value.is_number()) return std::to_string(value.get<std::int64_t>());
        return "'" + value.get<std::string>() + "'";
    };
    const auto contents = nlohmann::ordered_json::parse(
        readBytes(std::filesystem::path(TOLVEK_TEST_DATA) / "jet" / (name + ".json")));
    JetTables tables;
    for (const auto& [table, rows] : contents.items())
        for (JetRows& all = tables[table]; const auto& row : rows) {
            std::vector<std::string> fields;
            for (const auto& [column, value] : row.items())
                fields.push_back(column + "=" + shown(value));
            all.insert(fields);
        }
    return tables;
}

// Every field of every row, as SQLite itself returns it.
inline JetTables tablesOf(Connection& connection)
{
    JetTables tables;
    std::vector<Text> names;
    {
        const auto query = connection.query(u"SELECT name FROM sqlite_master WHERE type = 'table'");
        while (query->step())
            names.push_back(query->text(0));
    }
    for (const Text& name : names) {
        const Table table = connection.table(name);
        JetRows& rows = tables[toUtf8(name)];
        const auto query = connection.query(TextView(u"SELECT * FROM \"" + name + u"\""));
        while (query->step()) {
            std::vector<std::string> fields;
            for (int i = 0; i < static_cast<int>(table.columns.size()); ++i)
                fields.push_back(toUtf8(table.columns[static_cast<std::size_t>(i)].name) + "=" +
                                 (query->isNull(i)      ? "Null"
                                  : query->isInteger(i) ? std::to_string(query->number(i))
                                                        : "'" + toUtf8(query->text(i)) + "'"));
            rows.insert(fields);
        }
    }
    return tables;
}

}
