#include "dao_fixture.h"

namespace tolvek::test {
namespace {

TEST_F(DaoTest, AValueWithASingleQuoteIsNeverParsed)
{
    Database database = opened();
    EXPECT_EQ(errorOf([&] { addMail(database, u"2000", 1, u"a'b"); }), 3075);
    EXPECT_EQ(mails(), 0);
}

}
}
