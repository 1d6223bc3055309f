#include "platform/dao/dao.h"

#include "dao_fixture.h"

namespace tolvek::test {
namespace {

using DatabaseTest = DaoTest;

TEST_F(DatabaseTest, ATableCreatedIsThereAfterReopening)
{
    Database database = opened();
    EXPECT_EQ(database.TableDefs().names(), (std::vector<Text>{u"tblMail", u"tblBook"}));
    EXPECT_EQ(mails(), 0);
}

TEST_F(DatabaseTest, RowsAreInsertedChangedAndDeleted)
{
    Database database = opened();
    addMail(database, u"20000215", 1);
    addMail(database, u"20000216", 2, u"Hello");
    Statement change{u"UPDATE tblMail SET Mail_Subject = '"};
    change << Text(u"new") << u"' WHERE Mail_Day = '" << Text(u"20000216")
           << u"' AND ( Mail_Subject <> '" << Text(u"x") << u"' )";
    database.Execute(change, dbFailOnError);
    Recordset row = database.OpenRecordset(Statement{u"SELECT * FROM tblMail WHERE Mail_No = 2"});
    EXPECT_EQ(row.field(u"Mail_Subject").text(), u"new");
    database.Execute(Statement{u"DELETE FROM tblMail WHERE Mail_No = 2 ;"}, dbFailOnError);
    EXPECT_EQ(mails(), 1);
}

}
}
