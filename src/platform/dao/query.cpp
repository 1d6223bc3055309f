#include "platform/dao/query.h"

#include "platform/dao/dao_errors.h"

#include <cstring>

namespace tolvek {

Query::~Query()
{
    sqlite3_reset(statement_);
    sqlite3_clear_bindings(statement_);
}

void Query::check(int code) const
{
    if (code != SQLITE_OK && code != SQLITE_ROW && code != SQLITE_DONE)
        throw sqliteError(code, sqlite3_db_handle(statement_), path_);
}

// SQLite removes a byte order mark at the beginning of a text. If the text itself begins
// with one, another is put in front of it.
Query& Query::bind(int position, TextView text)
{
    const bool marked = text.starts_with(u'\uFEFF') || text.starts_with(u'\uFFFE');
    const Text kept = marked ? u"\uFEFF" + Text(text) : Text();
    const TextView bound = marked ? TextView(kept) : text;
    const void* data = bound.data() ? bound.data() : u""; // a null pointer would bind Null
    check(sqlite3_bind_text64(statement_, position, static_cast<const char*>(data),
                              bound.size() * 2, SQLITE_TRANSIENT, SQLITE_UTF16LE));
    return *this;
}

Query& Query::bind(int position, std::int64_t number)
{
    check(sqlite3_bind_int64(statement_, position, number));
    return *this;
}

Query& Query::bind(int position, const Bound& value)
{
    if (const Text* text = std::get_if<Text>(&value)) return bind(position, TextView(*text));
    return bind(position, std::get<std::int64_t>(value));
}

Query& Query::bindAll(const std::vector<Bound>& values)
{
    int position = 0;
    for (const Bound& value : values)
        bind(++position, value);
    return *this;
}

bool Query::step()
{
    const int code = sqlite3_step(statement_);
    check(code);
    return code == SQLITE_ROW;
}

void Query::run()
{
    while (step()) {
    }
}

bool Query::isNull(int column) const
{
    return sqlite3_column_type(statement_, column) == SQLITE_NULL;
}

bool Query::isInteger(int column) const
{
    return sqlite3_column_type(statement_, column) == SQLITE_INTEGER;
}

std::int64_t Query::number(int column) const
{
    return sqlite3_column_int64(statement_, column);
}

Text Query::text(int column) const
{
    const void* data = sqlite3_column_text16(statement_, column);
    if (data == nullptr) return {};
    Text text(static_cast<std::size_t>(sqlite3_column_bytes16(statement_, column)) / 2, u'\0');
    std::memcpy(text.data(), data, text.size() * 2); // data needn't be aligned
    return text;
}

}
