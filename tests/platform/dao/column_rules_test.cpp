#include "dao_fixture.h"

namespace tolvek::test {
namespace {

class ColumnRulesTest : public DaoTest {
protected:
    // Stores the value, an SQL literal, in a new row.
    template <std::size_t N> int errorOfStoring(const char16_t (&column)[N], const Statement& value)
    {
        Statement sql{u"INSERT INTO tblMail (Mail_Day, Mail_No, "};
        sql << column << u") VALUES ('d', " << ++number_ << u", ";
        return errorOf([&] { database_.Execute(joined(sql, value), dbFailOnError); });
    }
    template <std::size_t N> Text stored(const char16_t (&column)[N], const Statement& value)
    {
        EXPECT_EQ(errorOfStoring(column, value), 0) << toUtf8(value.text());
        Recordset row = database_.OpenRecordset(Statement{u"SELECT * FROM tblMail WHERE Mail_No = "}
                                                << number_);
        return row.field(column).text();
    }
    static Statement joined(Statement sql, const Statement& value)
    {
        for (const Statement::Part& part : value.parts())
            part.isNumber  ? sql << std::stoi(toUtf8(part.text))
            : part.isValue ? sql << part.text
                           : sql << u"'";
        return sql << u")";
    }
    static Statement text(const Text& value) { return Statement{u"'"} << value << u"'"; }

    Database database_ = opened();
    int number_ = 0;
};

TEST_F(ColumnRulesTest, ATextIsNeverCut)
{
    EXPECT_EQ(stored(u"Mail_Subject", text(u"十文字の件名です。。")), u"十文字の件名です。。");
    EXPECT_EQ(errorOfStoring(u"Mail_Subject", text(u"十一文字の件名です。。")), 3163);
    EXPECT_EQ(errorOfStoring(u"Mail_Subject", text(u"😀😀😀😀😀x")), 3163);
    EXPECT_EQ(stored(u"Mail_Subject", text(u"😀😀😀😀😀")), u"😀😀😀😀😀");
}

TEST_F(ColumnRulesTest, AnEmptyTextNeedsAFieldThatTakesIt)
{
    EXPECT_EQ(stored(u"Mail_Subject", text(u"")), u"");
    EXPECT_EQ(stored(u"Mail_Text1", text(u"")), u"");
    EXPECT_EQ(errorOfStoring(u"Mail_Text2", text(u"")), 3315);
    EXPECT_EQ(stored(u"Mail_Text2", text(u" ")), u" ");
    Statement noDay{u"INSERT INTO tblMail (Mail_Day, Mail_No) VALUES ('', 1)"};
    EXPECT_EQ(errorTextOf([&] { database_.Execute(noDay, dbFailOnError); }),
              u"フィールド 'Mail_Day' には長さ 0 の文字列を指定できません。");
}

TEST_F(ColumnRulesTest, IntegersTakeDigitsInAnyForm)
{
    EXPECT_EQ(stored(u"Mail_Count", text(u"00")), u"0");
    EXPECT_EQ(stored(u"Mail_Count", text(u"12")), u"12");
    EXPECT_EQ(stored(u"Mail_Count", text(u"-2147483648")), u"-2147483648");
    EXPECT_EQ(stored(u"Mail_Count", text(u"2147483647")), u"2147483647");
    EXPECT_EQ(errorOfStoring(u"Mail_Count", text(u"2147483648")), 3349);
    EXPECT_EQ(errorOfStoring(u"Mail_Count", text(u"99999999999999999999")), 3349);
    EXPECT_EQ(errorOfStoring(u"Mail_Count", text(u"")), 3464);
    EXPECT_EQ(errorOfStoring(u"Mail_Count", text(u"abc")), 3464);
    EXPECT_EQ(errorOfStoring(u"Mail_Count", text(u"1x")), 3464);
    Statement bare{u"INSERT INTO tblMail (Mail_Day, Mail_No, Mail_Count) VALUES ('d', -32768, 00)"};
    EXPECT_EQ(errorOf([&] { database_.Execute(bare, dbFailOnError); }), 0);
    Statement small{u"INSERT INTO tblMail (Mail_Day, Mail_No) VALUES ('d', 32768)"};
    EXPECT_EQ(errorOf([&] { database_.Execute(small, dbFailOnError); }), 3349);
}

TEST_F(ColumnRulesTest, FalseIntoATextIsZero)
{
    database_.Execute(
        Statement{u"INSERT INTO tblMail (Mail_Day, Mail_No, Mail_Include, Mail_Subject) "
                  u"VALUES ('d', 1, False, true)"},
        dbFailOnError);
    Recordset row = database_.OpenRecordset(Statement{u"SELECT * FROM tblMail"});
    EXPECT_EQ(row.field(u"Mail_Include").text(), u"0");
    EXPECT_EQ(row.field(u"Mail_Subject").text(), u"-1");
}

TEST_F(ColumnRulesTest, AnyNumberButZeroIsYes)
{
    EXPECT_EQ(stored(u"Mail_Sent", Statement{u"'"} << Text(u"7") << u"'"), u"True");
    EXPECT_EQ(stored(u"Mail_Sent", text(u"0")), u"False");
    EXPECT_EQ(stored(u"Mail_Sent", text(u"True")), u"True");
    EXPECT_EQ(stored(u"Mail_Sent", text(u"false")), u"False");
    EXPECT_EQ(errorOfStoring(u"Mail_Sent", text(u"maybe")), 3464);
    EXPECT_EQ(rows(database_, Statement{u"SELECT * FROM tblMail WHERE Mail_Sent = True"}), 2);
    database_.Execute(Statement{u"UPDATE tblMail SET Mail_Sent = 5"}, dbFailOnError);
    EXPECT_EQ(rows(database_, Statement{u"SELECT * FROM tblMail WHERE Mail_Sent = -1"}), 4);
}

TEST_F(ColumnRulesTest, OneKeyTwiceIs3022AlsoAcrossFormsOfYes)
{
    const auto add = [&](const Statement& sql) {
        return errorOf([&] { database_.Execute(sql, dbFailOnError); });
    };
    EXPECT_EQ(
        add(Statement{u"INSERT INTO tblMail (Mail_Day, Mail_No, Mail_Sent) VALUES ('d', 1, -1)"}),
        0);
    EXPECT_EQ(
        add(Statement{u"INSERT INTO tblMail (Mail_Day, Mail_No, Mail_Sent) VALUES ('D ', 1, 1)"}),
        3022);
    EXPECT_EQ(
        add(Statement{u"INSERT INTO tblMail (Mail_Day, Mail_No, Mail_Sent) VALUES ('Ｄ', 1, 1)"}),
        0);
    EXPECT_EQ(mails(), 2);
    EXPECT_EQ(add(Statement{u"INSERT INTO tblMail (Mail_No) VALUES (1)"}), 3058);
    EXPECT_EQ(add(Statement{u"UPDATE tblMail SET Mail_Day = 'x'"}), 3022);
    EXPECT_EQ(rows(database_, Statement{u"SELECT * FROM tblMail WHERE Mail_Day = 'x'"}), 0);
}

TEST_F(ColumnRulesTest, FieldsLeftOutGetTheirDefaultOrNull)
{
    database_.Execute(Statement{u"INSERT INTO tblMail (Mail_Day, Mail_No) VALUES ('d', 1)"},
                      dbFailOnError);
    Recordset row = database_.OpenRecordset(Statement{u"SELECT * FROM tblMail"});
    EXPECT_EQ(row.field(u"Mail_Subject").text(), u"");
    EXPECT_FALSE(row.field(u"Mail_Sent").boolean());
    EXPECT_TRUE(row.field(u"Mail_Count").isNull());
    EXPECT_TRUE(row.field(u"Mail_Text1").isNull());
}

TEST_F(ColumnRulesTest, FurtherIndexesAndDefaultsAreMadeWithTheTable)
{
    TableDef table = database_.CreateTableDef(u"tblMore");
    Field code = table.CreateField(u"Code", dbInteger);
    code.DefaultValue = u"3";
    table.Fields.Append(code);
    Field name = table.CreateField(u"Name", dbText, 5);
    name.DefaultValue = u"it's";
    table.Fields.Append(name);
    Index unique = table.CreateIndex(u"byName");
    unique.Unique = true;
    unique.Fields.Append(unique.CreateField(u"Name"));
    table.Indexes.Append(unique);
    Index plain = table.CreateIndex(u"byCode");
    plain.Fields.Append(plain.CreateField(u"Code"));
    table.Indexes.Append(plain);
    database_.TableDefs().Append(table);
    Recordset all = database_.OpenRecordset(Statement{u"SELECT * FROM tblMore"});
    all.AddNew();
    all.Update();
    all = database_.OpenRecordset(Statement{u"SELECT * FROM tblMore"});
    EXPECT_EQ(all.field(u"code").int16(), 3);
    EXPECT_EQ(all.field(u"name").text(), u"it's");
    EXPECT_EQ(errorOf([&] {
                  database_.Execute(Statement{u"INSERT INTO tblMore (Name) VALUES ('IT''S')"}, 0);
              }),
              3022);
    EXPECT_EQ(errorOf([&] { database_.TableDefs().Append(table); }), 3010);
}

TEST_F(ColumnRulesTest, ATableThatFailsLeavesNothing)
{
    TableDef table = database_.CreateTableDef(u"tblBad");
    table.Fields.Append(table.CreateField(u"A", dbInteger));
    Index wrong = table.CreateIndex(u"wrong");
    wrong.Fields.Append(wrong.CreateField(u"B"));
    table.Indexes.Append(wrong);
    EXPECT_NE(errorOf([&] { database_.TableDefs().Append(table); }), 0);
    EXPECT_EQ(database_.TableDefs().names().size(), 2u);
    addMail(database_, u"2000", 1);
    EXPECT_EQ(mails(), 1);
}

}
}
