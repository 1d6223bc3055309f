#include "store/open_or_create.h"

#include "store/database_files.h"
#include "support/archive_fixture.h"

namespace tolvek::test {
namespace {

const Text kQuestion = u"ＤＢがありません。\r\nＤＢを作成しますか？";

class OpenOrCreateTest : public ArchiveFixture {
protected:
    static int numberOfAsking()
    {
        try {
            openOrAskToCreate(u"dspSearch Name");
        } catch (const RuntimeError& error) {
            return error.number();
        }
        return 0;
    }
};

TEST_F(OpenOrCreateTest, ADatabaseThatIsThereIsOpenedWithoutAWord)
{
    openOrAskToCreate(u"dspSearch Name");
    EXPECT_TRUE(gDb.isOpen());
}

TEST_F(OpenOrCreateTest, YesCreatesAndOpensOne)
{
    removeDatabase(gDbPath);
    boxes.expect(kQuestion, MsgAnswer::Yes, u"dspSearch Name");
    EXPECT_EQ(numberOfAsking(), 0);
    EXPECT_TRUE(gDb.isOpen());
    EXPECT_EQ(rows(u"tblTolvek"), 0);
}

TEST_F(OpenOrCreateTest, NoGivesTheErrorBack)
{
    removeDatabase(gDbPath);
    boxes.expect(kQuestion, MsgAnswer::No, u"dspSearch Name");
    EXPECT_EQ(numberOfAsking(), 3024);
    EXPECT_FALSE(databaseExists(gDbPath));
}

TEST_F(OpenOrCreateTest, WithoutAQuestionOneIsSimplyCreated)
{
    removeDatabase(gDbPath);
    openOrCreate();
    EXPECT_TRUE(gDb.isOpen());
}

TEST_F(OpenOrCreateTest, AFileThatIsNoDatabaseIsNoMissingOne)
{
    writeBytes(file("Tolvek.Mdb"), "no database at all, but a file with some text in it");
    EXPECT_EQ(numberOfAsking(), 3343);
}

}
}
