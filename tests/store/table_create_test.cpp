#include "platform/system/test_hooks.h"
#include "store/table_create.h"

#include "store/schema.h"
#include "support/archive_fixture.h"
#include "support/yield_watch.h"

namespace tolvek::test {
namespace {

const Text kQuestion = u"Fileは既に存在します。削除しますか？";

class TableCreateTest : public ArchiveFixture {
protected:
    static std::vector<Text> tableNames()
    {
        Database database = DBEngine::OpenDatabase(gDbPath);
        std::vector<Text> names = database.TableDefs().names();
        database.Close();
        return names;
    }
    // The number of the error when the row is stored; 0 for none.
    static int numberOfStoring(const Mail& m)
    {
        try {
            store(m);
        } catch (const RuntimeError& error) {
            return error.number();
        }
        return 0;
    }
};

TEST_F(TableCreateTest, WithoutAFileNoQuestionIsAskedAndSixEmptyTablesResult)
{
    std::vector<Text> names = tableNames();
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<Text>{u"tblFilter", u"tblFilterData", u"tblFriend",
                                        u"tblSearch_Addresses", u"tblSearch_Name", u"tblTolvek"}));
    EXPECT_EQ(rows(u"tblTolvek"), 0);
    EXPECT_EQ(rows(u"tblSearch_Addresses"), 0);
    EXPECT_EQ(rows(u"tblSearch_Name"), 0);
    EXPECT_EQ(rows(u"tblFriend"), 0);
    EXPECT_EQ(rows(u"tblFilter"), 0);
    EXPECT_EQ(rows(u"tblFilterData"), 0);
    EXPECT_FALSE(gDb.isOpen());
}

TEST_F(TableCreateTest, OneFileResultsAndNothingBesideIt)
{
    EXPECT_EQ(fileNames(folder.path()), std::vector<std::string>{"Tolvek.Mdb"});
}

TEST_F(TableCreateTest, AnswerNoTouchesNeitherTheFileNorTheOpenDatabase)
{
    store(Mail{});
    gDb = DBEngine::OpenDatabase(gDbPath);
    boxes.expect(kQuestion, MsgAnswer::No, u"Table Create");
    Table_Create();
    EXPECT_TRUE(gDb.isOpen());
    gDb.Close();
    EXPECT_EQ(rows(u"tblTolvek"), 1);
    EXPECT_EQ(boxes.shown().front().defaultAnswer, MsgAnswer::No);
}

TEST_F(TableCreateTest, AnswerYesGivesANewEmptyArchive)
{
    store(Mail{});
    boxes.expect(kQuestion, MsgAnswer::Yes, u"Table Create");
    Table_Create();
    EXPECT_EQ(rows(u"tblTolvek"), 0);
    EXPECT_EQ(tableNames().size(), 6u);
}

TEST_F(TableCreateTest, WhatACutOffCreationLeftBehindIsNoObstacle)
{
    writeBytes(folder / "Tolvek.Mdb.Create", "half a file");
    boxes.expect(kQuestion, MsgAnswer::Yes);
    Table_Create();
    EXPECT_EQ(fileNames(folder.path()), std::vector<std::string>{"Tolvek.Mdb"});
}

TEST_F(TableCreateTest, ACreationThatFailsLeavesTheOldArchive)
{
    store(Mail{});
    hooks::setFileProbe([](FileOperation operation, const Path&) {
        if (operation == FileOperation::Replace || operation == FileOperation::Rename)
            throw std::system_error(std::make_error_code(std::errc::io_error));
    });
    boxes.expect(kQuestion, MsgAnswer::Yes);
    boxes.expect(u"エラー番号： 57\r\n（" + errorText(57) + u"）", MsgAnswer::Ok,
                 u"エラーメッセージ (Table_Create)");
    Table_Create();
    hooks::setFileProbe({});
    EXPECT_EQ(rows(u"tblTolvek"), 1);
}

struct Creation {
    void (*routine)();
    TextView reportedAs;
};

TEST_F(TableCreateTest, EachTableReportsUnderItsName)
{
    const Creation table[] = {
        {tblTolvek_Create, u"tblTolvek_Create"},
        {tblSearch_Addresses_Create, u"tblSearch_Addresses_Create"},
        {tblSearch_Name_Create, u"tblSearch_Name_Create"},
        {tblFriend_Create, u"tblFilterData_UnLoad"},
        {tblFilter_Create, u"tblFilter_Create"},
        {tblFilterData_Create, u"tblFilterData_Create"},
    };
    for (const Creation& creation : table) { // on a database that isn't open
        boxes.expect(u"エラー番号： 3420\r\n（" + errorText(3420) + u"）", MsgAnswer::Ok,
                     u"エラーメッセージ (" + Text(creation.reportedAs) + u")");
        creation.routine();
    }
}

TEST_F(TableCreateTest, AFailingTableDoesntStopTheNext)
{
    gDb = DBEngine::Workspaces(0).CreateDatabase(joinPath(appPath(), u"Other.Mdb"), u"");
    tblTolvek_Create();
    boxes.expect(u"エラー番号： 3010\r\n（テーブル 'tblTolvek' は既に存在します。）");
    tblTolvek_Create();
    gDb = DBEngine::Workspaces(0).CreateDatabase(joinPath(appPath(), u"Third.Mdb"), u"");
    tblFriend_Create();
    EXPECT_EQ(gDb.TableDefs().names().size(), 1u);
}

struct Shape {
    TableSpec table;
    int fields;
};

TEST_F(TableCreateTest, TheTablesHaveTheirFields)
{
    const Shape shapes[] = {
        {tblTolvekSpec(), 26}, {tblSearch_AddressesSpec(), 1}, {tblSearch_NameSpec(), 1},
        {tblFriendSpec(), 5},  {tblFilterSpec(), 5},           {tblFilterDataSpec(), 11},
    };
    for (const Shape& shape : shapes)
        EXPECT_EQ(static_cast<int>(shape.table.fields.size()), shape.fields)
            << toUtf8(shape.table.name);
    EXPECT_EQ(tblTolvekSpec().fields[9].name, u"tblTolvek_Mail1");
    EXPECT_EQ(tblTolvekSpec().fields[24].name, u"tblTolvek_Mail16");
    EXPECT_EQ(tblTolvekSpec().fields[25].name, u"tblTolvek_Include");
}

TEST_F(TableCreateTest, FieldsLieInTheirOrderAndTakeTheirDefaults)
{
    execute(Statement{u"INSERT INTO tblTolvek ( tblTolvek_YMD, tblTolvek_HMS, tblTolvek_SubKey, "
                      u"tblTolvek_SndRcvFlag, tblTolvek_SndAdd, tblTolvek_RcvAdd ) "
                      u"VALUES( '20000215', '101112', 0, False, 'a', 'b' )"});
    const Statement all{u"SELECT * FROM tblTolvek"};
    EXPECT_EQ(column(all, 0).front(), u"20000215");
    EXPECT_EQ(column(all, 3).front(), u"False");
    EXPECT_EQ(column(all, 5).front(), u"a");
    for (int position = 8; position <= 25; ++position)
        EXPECT_EQ(column(all, position).front(), u"") << position;
    execute(Statement{u"INSERT INTO tblFilter ( tblFilter_No, tblFilter_Header, tblFilter_Data ) "
                      u"VALUES( 10, 'h', 'd' )"});
    EXPECT_EQ(value(u"SELECT tblFilter_TermsCode FROM tblFilter"), u"0");
    EXPECT_EQ(value(u"SELECT tblFilter_ActionCode FROM tblFilter"), u"0");
}

TEST_F(TableCreateTest, AnEmptyAddressIsRefusedAnEmptySubjectIsNot)
{
    Mail empty;
    empty.SndAdd.clear();
    EXPECT_EQ(numberOfStoring(empty), 3315);
    empty = Mail{};
    empty.RcvAdd.clear();
    EXPECT_EQ(numberOfStoring(empty), 3315);
    empty = Mail{};
    empty.Subject.clear();
    empty.Mail1.clear();
    EXPECT_EQ(numberOfStoring(empty), 0);
    EXPECT_EQ(rows(u"tblTolvek"), 1);
}

TEST_F(TableCreateTest, TextsAreWiderThanWhatTheImportWritesAndNeverCut)
{
    Mail wide;
    wide.SndName = wide.RcvName = Text(64, u'名');
    wide.SndAdd = wide.RcvAdd = Text(64, u'a');
    wide.Subject = Text(128, u'題');
    EXPECT_EQ(numberOfStoring(wide), 0);
    EXPECT_EQ(value(u"SELECT tblTolvek_Subject FROM tblTolvek"), wide.Subject);
    for (Text Mail::*field : {&Mail::SndName, &Mail::RcvName, &Mail::SndAdd, &Mail::RcvAdd}) {
        Mail tooWide;
        tooWide.*field = Text(65, u'a');
        EXPECT_EQ(numberOfStoring(tooWide), 3163);
    }
    Mail longSubject;
    longSubject.Subject = Text(129, u'題');
    EXPECT_EQ(numberOfStoring(longSubject), 3163);
}

TEST_F(TableCreateTest, TwoMailsMayDifferInTheirDirectionAlone)
{
    Mail sent;
    sent.SndRcvFlag = true;
    EXPECT_EQ(numberOfStoring(Mail{}), 0);
    EXPECT_EQ(numberOfStoring(sent), 0);
    EXPECT_EQ(numberOfStoring(sent), 3022);
    EXPECT_EQ(rows(u"tblTolvek"), 2);
}

TEST_F(TableCreateTest, NamesAndSubjectAreNotPartOfAMailsIdentity)
{
    Mail other;
    other.SndName = u"別の名";
    other.Subject = u"別の題";
    EXPECT_EQ(numberOfStoring(Mail{}), 0);
    EXPECT_EQ(numberOfStoring(other), 3022);
    other.SubKey = 1;
    EXPECT_EQ(numberOfStoring(other), 0);
}

TEST_F(TableCreateTest, TheFileAndEachTableYield)
{
    gDbPath = joinPath(appPath(), u"Other.Mdb");
    EXPECT_EQ(yieldsOf(Table_Create), 1 + 6);
}

}
}
