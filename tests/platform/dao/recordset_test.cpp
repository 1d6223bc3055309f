#include "dao_fixture.h"
#include "platform/system/test_hooks.h"

namespace tolvek::test {
namespace {

class RecordsetTest : public DaoTest {
protected:
    Recordset all() { return database_.OpenRecordset(Statement{u"SELECT * FROM tblMail"}); }
    static std::vector<int> numbers(Recordset set)
    {
        std::vector<int> found;
        for (; !set.Eof(); set.MoveNext())
            found.push_back(set.field(u"Mail_No").int16());
        return found;
    }
    Database database_ = opened();
};

TEST_F(RecordsetTest, RowsComeInTheOrderAskedForThenByKey)
{
    addMail(database_, u"20000215", 1, u"b");
    addMail(database_, u"20000216", 9, u"B");
    addMail(database_, u"20000214", 3, u"a");
    addMail(database_, u"20000216", 2, u"B");
    const auto ordered = [&](const Statement& sql) {
        return numbers(database_.OpenRecordset(sql, dbOpenDynaset));
    };
    EXPECT_EQ(
        ordered(Statement{u"SELECT * FROM tblMail ORDER By  Mail_Subject ASC, Mail_Day desc"}),
        (std::vector<int>{3, 2, 9, 1}));
    EXPECT_EQ(ordered(Statement{u"SELECT * FROM tblMail ORDER By Mail_Subject ASC"}),
              (std::vector<int>{3, 1, 2, 9}));
    EXPECT_EQ(ordered(Statement{u"SELECT * FROM tblMail ORDER BY Mail_Day DESC ;"}),
              (std::vector<int>{2, 9, 1, 3}));
    EXPECT_EQ(ordered(Statement{u"SELECT * FROM tblMail"}), (std::vector<int>{3, 1, 2, 9}));
    EXPECT_EQ(ordered(Statement{
                  u"select * from TBLMAIL where (mail_no = 9) or ( MAIL_NO = 3) order by mail_no"}),
              (std::vector<int>{3, 9}));
}

TEST_F(RecordsetTest, CountsTheRowsThatWereVisited)
{
    for (int i = 1; i <= 3; ++i)
        addMail(database_, u"2000", i);
    Recordset set = all();
    EXPECT_EQ(set.RecordCount(), 1);
    set.MoveNext();
    EXPECT_EQ(set.RecordCount(), 2);
    set.MoveLast();
    set.MoveFirst();
    EXPECT_EQ(set.RecordCount(), 3);
    EXPECT_EQ(set.field(u"Mail_No").int16(), 1);
    EXPECT_FALSE(set.NoMatch());
}

TEST_F(RecordsetTest, WithoutRowsEveryMoveAndFieldIs3021)
{
    Recordset set = all();
    EXPECT_TRUE(set.Eof());
    EXPECT_EQ(set.RecordCount(), 0);
    EXPECT_EQ(errorOf([&] { set.MoveFirst(); }), 3021);
    EXPECT_EQ(errorOf([&] { set.MoveLast(); }), 3021);
    EXPECT_EQ(errorOf([&] { set.MoveNext(); }), 3021);
    EXPECT_EQ(errorOf([&] { set.field(0); }), 3021);
    EXPECT_EQ(errorTextOf([&] { set.field(u"Mail_No"); }), u"カレント レコードがありません。");
}

TEST_F(RecordsetTest, BehindTheLastRowMovingOnIs3021)
{
    addMail(database_, u"2000", 1);
    Recordset set = all();
    set.MoveNext();
    EXPECT_TRUE(set.Eof());
    EXPECT_EQ(errorOf([&] { set.MoveNext(); }), 3021);
    EXPECT_EQ(set.RecordCount(), 1);
}

TEST_F(RecordsetTest, FieldsByNameAndByPositionOfTheList)
{
    addMail(database_, u"2000", 7, u"subject");
    Recordset set =
        database_.OpenRecordset(Statement{u"SELECT Mail_Subject, Mail_No FROM tblMail"});
    EXPECT_EQ(set.field(0).text(), u"subject");
    EXPECT_EQ(set.field(1).text(), u"7");
    EXPECT_EQ(set.field(u"MAIL_NO").int16(), 7);
    EXPECT_EQ(errorOf([&] { set.field(2); }), 3265);
    EXPECT_EQ(errorOf([&] { set.field(-1); }), 3265);
    EXPECT_EQ(errorOf([&] { set.field(u"Mail_Day"); }), 3265);
    EXPECT_EQ(errorOf([&] { set.field(u"None"); }), 3265);
}

TEST_F(RecordsetTest, ARowDeletedMeanwhileIs3167AndTheOthersStay)
{
    for (int i = 1; i <= 3; ++i)
        addMail(database_, u"2000", i);
    Recordset set = all();
    EXPECT_EQ(set.field(u"Mail_No").int16(), 1);
    database_.Execute(Statement{u"DELETE FROM tblMail WHERE Mail_No <> 3"}, dbFailOnError);
    EXPECT_EQ(errorTextOf([&] { set.field(u"Mail_No"); }), u"レコードは削除されています。");
    set.MoveNext();
    EXPECT_EQ(errorOf([&] { set.field(u"Mail_Text1"); }), 3167);
    set.MoveNext();
    EXPECT_EQ(set.field(u"Mail_No").int16(), 3);
    EXPECT_EQ(set.RecordCount(), 3);
}

TEST_F(RecordsetTest, ARowChangedMeanwhileShowsTheChange)
{
    addMail(database_, u"2000", 1, u"old");
    Recordset set = all();
    EXPECT_EQ(set.field(u"Mail_Subject").text(), u"old");
    database_.Execute(Statement{u"UPDATE tblMail SET Mail_Subject = 'new'"}, dbFailOnError);
    EXPECT_EQ(set.field(u"Mail_Subject").text(), u"new");
}

TEST_F(RecordsetTest, MoreRowsThanSixteenBitsCanCount)
{
    DBEngine::Session session;
    inTransaction([&] {
        for (int i = 0; i < 32768; ++i)
            database_.Execute(Statement{u"INSERT INTO tblBook (Book_Name) VALUES ('"} << 100000 + i
                                                                                      << u"')",
                              128);
    });
    Recordset set =
        database_.OpenRecordset(Statement{u"SELECT * FROM tblBook ORDER By Book_Name ASC"});
    set.MoveLast();
    EXPECT_EQ(set.RecordCount(), 32768);
    EXPECT_EQ(set.field(0).text(), u"132767");
}

TEST_F(RecordsetTest, CountingReadsNoMailText)
{
    for (int i = 0; i < 20; ++i) {
        Statement sql{u"INSERT INTO tblMail (Mail_Day, Mail_No, Mail_Text1) VALUES ('d', "};
        database_.Execute(sql << i << u", '" << Text(200000, u'x') << u"')", dbFailOnError);
    }
    database_.Close();
    int pages = 0;
    hooks::setFileProbe(
        [&](FileOperation operation, const Path&) { pages += operation == FileOperation::Read; });
    database_ = opened();
    EXPECT_EQ(rows(database_, Statement{u"SELECT * FROM tblMail"}), 20);
    Recordset set = all();
    EXPECT_EQ(set.field(u"Mail_No").int16(), 0);
    EXPECT_EQ(set.field(u"Mail_Subject").text(), u"");
    EXPECT_LT(pages, 20);
    EXPECT_EQ(set.field(u"Mail_Text1").text().size(), 200000u);
    EXPECT_GT(pages, 90);
}

TEST_F(RecordsetTest, AddNewStoresARowAtUpdate)
{
    Recordset set = all();
    set.AddNew();
    set.setField(0, u"20000215");
    set.setField(1, u"12");
    set.setField(2, u"True");
    set.setField(4, 70000);
    set.setField(5, u"");
    EXPECT_EQ(mails(), 0);
    set.Update();
    EXPECT_EQ(mails(), 1);
    EXPECT_TRUE(set.Eof());
    EXPECT_EQ(set.RecordCount(), 1);
    set.MoveFirst();
    EXPECT_EQ(set.field(u"Mail_No").int16(), 12);
    EXPECT_TRUE(set.field(u"Mail_Sent").boolean());
    EXPECT_EQ(set.field(u"Mail_Count").int32(), 70000);
    EXPECT_EQ(set.field(u"Mail_Subject").text(), u"");
}

TEST_F(RecordsetTest, AddNewTakesTextsWithQuotesAsTheyAre)
{
    Recordset set = database_.OpenRecordset(Statement{u"SELECT * FROM tblBook"});
    set.AddNew();
    set.setField(0, u"Don't; DROP TABLE tblBook");
    set.Update();
    set.MoveFirst();
    EXPECT_EQ(set.field(0).text(), u"Don't; DROP TABLE tblBook");
}

struct Wrong {
    int position;
    Text value;
    int error;
};

TEST_F(RecordsetTest, WhatARowCannotHoldIsRefused)
{
    const Wrong wrongs[] = {{3, u"eleven char", 3163},
                            {6, u"", 3315},
                            {1, u"abc", 3464},
                            {1, u"", 3464},
                            {1, u"40000", 3349},
                            {4, u"9999999999", 3349},
                            {4, u"1e30", 3349},
                            {2, u"maybe", 3464},
                            {0, u"", 3315},
                            {8, u"x", 3265},
                            {-1, u"x", 3265}};
    for (const Wrong& wrong : wrongs) {
        const auto store = [&] {
            Recordset set = all();
            set.AddNew();
            set.setField(0, u"d");
            set.setField(1, 1);
            set.setField(wrong.position, wrong.value);
            set.Update();
        };
        EXPECT_EQ(errorOf(store), wrong.error) << toUtf8(wrong.value);
    }
    EXPECT_EQ(mails(), 0);
}

TEST_F(RecordsetTest, AKeyThatIsThereIs3022AndTheSetGoesOn)
{
    addMail(database_, u"d", 1);
    Recordset set = all();
    const auto add = [&](int number) {
        set.AddNew();
        set.setField(0, u"d");
        set.setField(1, number);
        set.Update();
    };
    EXPECT_EQ(errorOf([&] { add(1); }), 3022);
    EXPECT_EQ(errorOf([&] { set.Update(); }), 3020);
    EXPECT_EQ(errorOf([&] { set.setField(0, 1); }), 3020);
    add(2);
    EXPECT_EQ(mails(), 2);
    EXPECT_EQ(set.field(u"Mail_No").int16(), 1);
}

TEST_F(RecordsetTest, WithoutItsDatabaseEverythingIs3420)
{
    addMail(database_, u"2000", 1);
    Recordset set = all();
    database_.Close();
    EXPECT_EQ(errorOf([&] { set.Eof(); }), 3420);
    EXPECT_EQ(errorOf([&] { set.field(0); }), 3420);
    EXPECT_EQ(errorOf([&] { set.RecordCount(); }), 3420);
    EXPECT_EQ(errorOf([&] { set.Close(); }), 3420);
    EXPECT_EQ(errorOf([&] { Recordset().Eof(); }), 3420);
    database_ = opened();
    set = all();
    set.Close();
    EXPECT_EQ(errorOf([&] { set.MoveNext(); }), 3420);
}

}
}
