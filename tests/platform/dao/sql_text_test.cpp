#include "platform/dao/sql_text.h"

#include "dao_fixture.h"
#include "platform/dao/select_text.h"

namespace tolvek::test {
namespace {

const Text kAddress = u"taro@example.co.jp";

Text textAt(const SqlText& sql, std::size_t position)
{
    return std::get<Text>(sql.values.at(position));
}

std::int64_t numberAt(const SqlText& sql, std::size_t position)
{
    return std::get<std::int64_t>(sql.values.at(position));
}

TEST(SqlTextTest, ALiteralBecomesOneParameterHoweverItIsPutTogether)
{
    Statement sql{u"UPDATE t SET a = '"};
    sql << Text(u"x\"y") << u"' WHERE b = '" << kAddress << u" ' AND c = '" << Text() << u"'";
    const SqlText text = sqlText(sql);
    EXPECT_EQ(text.sql, u"UPDATE t SET a = ? WHERE b = ? AND c = ?");
    EXPECT_EQ(textAt(text, 0), u"x\"y");
    EXPECT_EQ(textAt(text, 1), kAddress + u" ");
    EXPECT_EQ(textAt(text, 2), u"");
}

TEST(SqlTextTest, EmptyValuesBesideQuotesAreNoDoubledQuotes)
{
    Statement sql{u"VALUES( '','', '"};
    sql << Text() << u"', '" << Text() << u"' )";
    const SqlText text = sqlText(sql);
    EXPECT_EQ(text.sql, u"VALUES( ?,?, ?, ? )");
    EXPECT_EQ(text.values.size(), 4u);
}

TEST(SqlTextTest, ADoubledQuoteInAFixedLiteralIsOne)
{
    EXPECT_EQ(textAt(sqlText(Statement{u"SET a = 'it''s'"}), 0), u"it's");
}

TEST(SqlTextTest, NumbersAndTruthAreParametersOutsideOfQuotesAndTextsInside)
{
    Statement sql{u"VALUES( "};
    sql << -7 << u", '" << 8 << u"', " << true << u", '" << false << u"', False, TRUE, Falsehood )";
    const SqlText text = sqlText(sql);
    EXPECT_EQ(text.sql, u"VALUES( ?, ?, ?, ?, 0, (-1), Falsehood )");
    EXPECT_EQ(numberAt(text, 0), -7);
    EXPECT_EQ(textAt(text, 1), u"8");
    EXPECT_EQ(numberAt(text, 2), -1);
    EXPECT_EQ(textAt(text, 3), u"False");
}

TEST(SqlTextTest, ANumberBehindANameBelongsToTheName)
{
    Statement sql{u"SELECT tblTolvek_Mail"};
    sql << 12 << u" FROM t";
    EXPECT_EQ(sqlText(sql).sql, u"SELECT tblTolvek_Mail12 FROM t");
}

TEST(SqlTextTest, OneShapeForEveryNumber)
{
    const auto shape = [](int number) {
        Statement sql{u"DELETE FROM t WHERE n = "};
        return sqlText(sql << number << u" AND m = 3").sql;
    };
    EXPECT_EQ(shape(1), shape(-30000));
}

TEST(SqlTextTest, WhatCannotBeAStatementIs3075)
{
    const Text quote = u"a'b";
    EXPECT_EQ(errorOf([&] { sqlText(Statement{u"WHERE a = '"} << quote << u"'"); }), 3075);
    EXPECT_EQ(errorOf([&] { sqlText(Statement{u"WHERE a = "} << quote); }), 3075);
    EXPECT_EQ(errorOf([&] { sqlText(Statement{u"WHERE a = "} << kAddress); }), 3075);
    EXPECT_EQ(errorOf([&] { sqlText(Statement{u"WHERE a = 'open"}); }), 3075);
    EXPECT_EQ(errorOf([&] { sqlText(Statement{u"WHERE a = "} << 1 << u"b"); }), 3075);
    EXPECT_EQ(errorOf([&] { sqlText(Statement{u"WHERE a = "} << 1 << 2); }), 3075);
    EXPECT_EQ(errorOf([&] { sqlText(Statement{u"WHERE a"} << -1); }), 3075);
}

TEST(SqlTextTest, ASyntaxErrorShowsTheConditionAsTheUserWroteIt)
{
    Statement sql{u"SELECT * FROM t"};
    sql << u" WHERE a = '" << Text(u"Don't") << u"'";
    EXPECT_EQ(errorTextOf([&] { sqlText(sql); }),
              u"クエリ式 'a = 'Don't'' の 構文エラー : 演算子がありません。");
}

TEST(SqlTextTest, ASemicolonEndsAndTextBehindItIs3142)
{
    EXPECT_EQ(sqlText(Statement{u"DELETE FROM t ; \r\n"}).sql, u"DELETE FROM t  \r\n");
    EXPECT_EQ(errorOf([] { sqlText(Statement{u"DELETE FROM t; DROP"}); }), 3142);
    EXPECT_EQ(errorOf([] { sqlText(Statement{u"DELETE FROM t;;"}); }), 3142);
    EXPECT_EQ(errorOf([] { sqlText(Statement{u"DELETE FROM t; 'x'"}); }), 3142);
    EXPECT_EQ(errorOf([] { sqlText(Statement{u"DELETE FROM t; "} << 1); }), 3142);
    EXPECT_EQ(textAt(sqlText(Statement{u"WHERE a = ';'"}), 0), u";");
}

TEST(SqlTextSelectTest, TakesAStatementApart)
{
    const SqlText sql = sqlText(
        Statement{u"select a, b FROM t WHERE (a = 'x' ) or ( b = 1) ORDER By  a ASC, c desc "});
    const SelectText select = selectText(sql);
    EXPECT_EQ(select.columns, (std::vector<Text>{u"a", u"b"}));
    EXPECT_EQ(select.table, u"t");
    EXPECT_TRUE(select.ordered);
    EXPECT_EQ(select.orderColumns, (std::vector<Text>{u"a", u"c"}));
    EXPECT_TRUE(selectText(sqlText(Statement{u"SELECT * FROM t"})).columns.empty());
}

TEST(SqlTextSelectTest, OneTableAndPlainColumnsOnly)
{
    const auto refused = [](const Statement& sql) {
        return errorOf([&] { selectText(sqlText(sql)); });
    };
    EXPECT_EQ(refused(Statement{u"DELETE FROM t"}), 3075);
    EXPECT_EQ(refused(Statement{u"SELECT * FROM"}), 3075);
    EXPECT_EQ(refused(Statement{u"SELECT * t"}), 3075);
    EXPECT_EQ(refused(Statement{u"SELECT * FROM t, u"}), 3075);
    EXPECT_EQ(refused(Statement{u"SELECT max(a) FROM t"}), 3075);
    EXPECT_EQ(refused(Statement{u"SELECT a, FROM t"}), 3075);
}

}
}
