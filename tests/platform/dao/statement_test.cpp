#include "dao_fixture.h"

namespace tolvek::test {
namespace {

using StatementTest = DaoTest;

TEST_F(StatementTest, AValueWithASingleQuoteIsNeverParsed)
{
    Database database = opened();
    EXPECT_EQ(errorOf([&] { addMail(database, u"2000", 1, u"a'b"); }), 3075);
    EXPECT_EQ(errorOf([&] { addMail(database, u"2000", 1, u"'"); }), 3075);
    EXPECT_EQ(mails(), 0);
}

TEST_F(StatementTest, HostileTextsAreStoredLetterByLetter)
{
    const Text hostile[] = {u"\"; DROP TABLE tblMail; --",
                            u"x\"); DELETE FROM tblMail; --",
                            u"|shell(\"rm\")|",
                            u"?1 :a @b $c",
                            u"/* -- */ ;",
                            Text(u"NUL\0behind", 10),
                            u"\uFEFFmark",
                            u"\uFFFEmark",
                            Text(1, char16_t(0xD800)) + u"lone",
                            u"[a] `b` ’ ＇",
                            u"\r\n\t 行"};
    Database database = opened();
    int number = 0;
    for (const Text& text : hostile) {
        Statement sql{u"INSERT INTO tblMail (Mail_Day, Mail_No, Mail_Text1) VALUES ('"};
        database.Execute(sql << u"d" << u"', " << ++number << u", '" << text << u"')",
                         dbFailOnError);
        Statement found{u"SELECT Mail_Text1 FROM tblMail WHERE Mail_Text1 = '"};
        Recordset row = database.OpenRecordset(found << text << u"'");
        EXPECT_EQ(row.field(0).text(), text) << number;
    }
    EXPECT_EQ(mails(), number);
}

TEST_F(StatementTest, ErrorsOfStatementsCarryTheirTexts)
{
    Database database = opened();
    const auto text = [&](const Statement& sql) {
        return errorTextOf([&] {
            sql.text().starts_with(u"SELECT") ? void(database.OpenRecordset(sql))
                                              : database.Execute(sql, dbFailOnError);
        });
    };
    EXPECT_EQ(text(Statement{u"SELECT * FROM tblNone"}),
              u"入力テーブルまたはクエリ 'tblNone' "
              u"が見つかりませんでした。そのテーブルやクエリが存在していること、"
              u"または名前が正しいことを確認してください。");
    EXPECT_EQ(text(Statement{u"DELETE FROM tblNone"}).substr(0, 22),
              u"入力テーブルまたはクエリ 'tblNone'");
    EXPECT_EQ(
        text(Statement{u"SELECT * FROM tblMail WHERE Mail_X = 1 AND Mail_Y = 2 AND Mail_X = 3"}),
        u"パラメータが少なすぎます。2 を指定してください。");
    EXPECT_EQ(text(Statement{u"SELECT Mail_X FROM tblMail"}),
              u"パラメータが少なすぎます。1 を指定してください。");
    EXPECT_EQ(text(Statement{u"SELECT * FROM tblMail ORDER BY Mail_X"}),
              u"パラメータが少なすぎます。1 を指定してください。");
    EXPECT_EQ(text(Statement{u"INSERT INTO tblBook (Nobody) VALUES ('x')"}),
              u"パラメータが少なすぎます。1 を指定してください。");
    EXPECT_EQ(text(Statement{u"INSERT INTO tblBook (Book_Name VALUES ('x')"}),
              u"INSERT INTO ステートメントの構文エラーです。");
    EXPECT_EQ(text(Statement{u"INSERT INTO tblBook (Book_Name) VALUES ('x', 'y')"}),
              u"INSERT INTO ステートメントの構文エラーです。");
    EXPECT_EQ(text(Statement{u"DELETE FROM tblBook; DELETE FROM tblMail"}),
              u"SQL ステートメントの後に文字があります。");
    EXPECT_EQ(text(Statement{u"SELECT * FROM tblMail WHERE Mail_No = = 1"}),
              u"クエリ式 'Mail_No = = 1' の 構文エラー : 演算子がありません。");
    EXPECT_EQ(errorOf([&] {
                  database.OpenRecordset(
                      Statement{u"SELECT * FROM tblMail ORDER By Mail_Day ASC, "});
              }),
              3075);
}

TEST_F(StatementTest, OnlyActionsAreExecuted)
{
    Database database = opened();
    EXPECT_EQ(errorOf([&] { database.Execute(Statement{u"SELECT * FROM tblMail"}, 0); }), 3065);
    EXPECT_EQ(errorOf([&] { database.Execute(Statement{u"DROP TABLE tblMail"}, 0); }), 3129);
    EXPECT_EQ(errorOf([&] { database.Execute(Statement{u"PRAGMA user_version = 9"}, 0); }), 3129);
    EXPECT_EQ(mails(), 0);
}

TEST_F(StatementTest, AComparisonWithABlankBehindFindsTheText)
{
    Database database = opened();
    addMail(database, u"20000215", 1, u"Taro");
    Statement sql{u"UPDATE tblMail SET Mail_Subject = 'found' WHERE Mail_Subject = '"};
    database.Execute(sql << Text(u"taro") << u" ' ", dbFailOnError);
    EXPECT_EQ(rows(database, Statement{u"SELECT * FROM tblMail WHERE Mail_Subject = 'FOUND'"}), 1);
}

TEST_F(StatementTest, AHundredAndMoreShapesOfStatementsTakeTurns)
{
    Database database = opened();
    DBEngine::Session session;
    for (int i = 0; i < 250; ++i) {
        Statement sql{u"SELECT Mail_Day FROM tblMail WHERE Mail_No = 1"};
        for (int more = 0; more < i; ++more)
            sql << u" OR Mail_No = 2";
        addMail(database, u"2000", i);
        EXPECT_EQ(rows(database, sql), std::min(i, 2)) << i;
    }
}

}
}
