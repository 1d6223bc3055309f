#include "dao_fixture.h"

namespace tolvek::test {
namespace {

TEST_F(DaoTest, RowsComeInTheOrderAskedFor)
{
    Database database = opened();
    addMail(database, u"20000215", 1, u"b");
    addMail(database, u"20000216", 2, u"B");
    addMail(database, u"20000214", 3, u"a");
    Recordset all = database.OpenRecordset(
        Statement{u"SELECT * FROM tblMail ORDER By  Mail_Subject ASC, Mail_Day desc"},
        dbOpenDynaset);
    std::vector<int> numbers;
    for (; !all.Eof(); all.MoveNext())
        numbers.push_back(all.field(u"Mail_No").int16());
    EXPECT_EQ(numbers, (std::vector<int>{3, 2, 1}));
}

}
}
