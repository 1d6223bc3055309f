#include "platform/dao/select_text.h"

#include <algorithm>

namespace tolvek {

namespace {

using Words = std::vector<SqlWord>;

RuntimeError syntaxError(const SqlText& sql)
{
    return RuntimeError(3075, shownExpression(sql.shown));
}

Text blanksOff(TextView text)
{
    const auto blank = [](char16_t c) {
        return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n';
    };
    while (!text.empty() && blank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && blank(text.back()))
        text.remove_suffix(1);
    return Text(text);
}

std::vector<Text> splitAtCommas(TextView text)
{
    std::vector<Text> items;
    for (;;) {
        const std::size_t comma = text.find(u',');
        items.push_back(blanksOff(text.substr(0, comma)));
        if (comma == TextView::npos) return items;
        text.remove_prefix(comma + 1);
    }
}

// Empty for *. Expressions aren't columns, since a value is read by its column's name.
std::vector<Text> columnsOf(TextView list, const SqlText& sql)
{
    if (blanksOff(list) == u"*") return {};
    std::vector<Text> columns = splitAtCommas(list);
    for (const Text& column : columns)
        if (column.empty() || column.find_first_of(u" *()'\"+-") != Text::npos)
            throw syntaxError(sql);
    return columns;
}

Words::const_iterator find(const Words& words, TextView keyword)
{
    return std::find_if(words.begin(), words.end(),
                        [&](const SqlWord& word) { return word.upper == keyword; });
}

// The columns are needed only to leave them out of the order that is appended; an item
// that isn't a plain name is harmless.
void takeOrder(SelectText& select, const SqlText& sql)
{
    const auto order = find(sql.words, u"ORDER");
    if (order == sql.words.end() || order + 1 == sql.words.end() || (order + 1)->upper != u"BY")
        return;
    select.ordered = true;
    for (const Text& item : splitAtCommas(TextView(sql.sql).substr((order + 1)->end)))
        select.orderColumns.push_back(item.substr(0, item.find(u' ')));
}

}

SelectText selectText(const SqlText& sql)
{
    const auto from = find(sql.words, u"FROM");
    if (!sql.startsWith(u"SELECT") || from == sql.words.end() || from + 1 == sql.words.end())
        throw syntaxError(sql);
    const SqlWord& table = *(from + 1);
    const std::size_t list = sql.words[0].end;
    SelectText select;
    select.columns = columnsOf(TextView(sql.sql).substr(list, from->begin - list), sql);
    select.table = sql.word(table);
    select.rest = sql.sql.substr(table.end);
    if (blanksOff(select.rest).starts_with(u',')) throw syntaxError(sql); // a second table
    takeOrder(select, sql);
    return select;
}

}
