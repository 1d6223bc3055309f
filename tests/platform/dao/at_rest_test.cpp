// The file between commands: no side files, and everything in it.
#include "dao_fixture.h"
#include "platform/dao/alone.h"
#include "platform/system/test_hooks.h"

#include <sys/stat.h>

namespace tolvek::test {
namespace {

using AtRestTest = DaoTest;

TEST_F(AtRestTest, OutsideOfASessionEveryCloseIsAtRest)
{
    Database database = opened();
    addMail(database, u"2000", 1);
    database.Close();
    EXPECT_EQ(files(), Names{"Test.Mdb"});
    EXPECT_EQ(journalManner(), 1);
}

TEST_F(AtRestTest, InASessionTheLogTakesTheCommitsAndItsEndBringsThemHome)
{
    {
        DBEngine::Session outer;
        Database database = opened();
        {
            DBEngine::Session inner;
            addMail(database, u"2000", 1);
            database.Close();
        }
        EXPECT_EQ(files(), (Names{"Test.Mdb", "Test.Mdb-wal"}));
    }
    EXPECT_EQ(files(), Names{"Test.Mdb"});
    EXPECT_EQ(journalManner(), 1);
    EXPECT_EQ(mails(), 1);
}

TEST_F(AtRestTest, RestPutsIdleFilesAtRestWithinASession)
{
    DBEngine::Session session;
    Database database = opened();
    addMail(database, u"2000", 1);
    DBEngine::Rest();
    EXPECT_TRUE(database.isOpen());
    addMail(database, u"2000", 2);
    database.Close();
    DBEngine::Rest();
    EXPECT_EQ(files(), Names{"Test.Mdb"});
    renameFile(folder_ / "Test.Mdb", folder_ / "Moved.Mdb");
    EXPECT_EQ(errorOf([&] { opened(); }), 3024);
    database = DBEngine::OpenDatabase(path("Moved.Mdb"));
    EXPECT_EQ(rows(database, Statement{u"SELECT * FROM tblMail"}), 2);
    database.Close();
    DBEngine::Rest();
    removeFile(folder_ / "Moved.Mdb");
    EXPECT_EQ(files(), Names{});
}

// While the box of a failure waits, which may be a night.
TEST_F(AtRestTest, AllIsAtRestBeforeAWaitAlsoWhatIsOpen)
{
    DBEngine::Session session;
    Database database = opened();
    addMail(database, u"2000", 1);
    DBEngine::Workspaces(0).BeginTrans();
    addMail(database, u"2000", 2);
    bool forced = false;
    hooks::setFileProbe([&](FileOperation operation, const Path& at) {
        forced = forced || (operation == FileOperation::FlushFolder && at == folder_.path());
    });
    putAllAtRest();
    hooks::setFileProbe({});
    EXPECT_TRUE(forced);
    EXPECT_EQ(files(), Names{"Test.Mdb"});
    EXPECT_EQ(journalManner(), 1);
    EXPECT_TRUE(database.isOpen());
    EXPECT_EQ(rows(database, Statement{u"SELECT * FROM tblMail"}), 1);
    addMail(database, u"2000", 3);
    EXPECT_EQ(files(), (Names{"Test.Mdb", "Test.Mdb-wal"}));
}

// The box must appear, since it reports the failure.
TEST_F(AtRestTest, AWaitBeginsAlsoWhereTheDiskDoesntLetTheFileRest)
{
    {
        DBEngine::Session session;
        Database database = opened();
        addMail(database, u"2000", 1);
        hooks::setFileProbe([](FileOperation operation, const Path&) {
            if (operation == FileOperation::Write)
                throw std::system_error(std::make_error_code(std::errc::io_error));
        });
        putAllAtRest();
        hooks::setFileProbe({});
    }
    EXPECT_EQ(files(), Names{"Test.Mdb"});
    EXPECT_EQ(mails(), 1);
}

TEST_F(AtRestTest, ADatabaseStillOpenIsAtRestBehindTheSession)
{
    Database database = opened();
    {
        DBEngine::Session session;
        addMail(database, u"2000", 1);
    }
    EXPECT_EQ(files(), Names{"Test.Mdb"});
    EXPECT_EQ(journalManner(), 1);
    addMail(database, u"2000", 2);
    EXPECT_EQ(mails(), 2);
}

TEST_F(AtRestTest, TheEndOfTheSessionEndsAForgottenTransaction)
{
    Database database = opened();
    {
        DBEngine::Session session;
        DBEngine::Workspaces(0).BeginTrans();
        addMail(database, u"2000", 1);
    }
    EXPECT_EQ(errorOf([] { DBEngine::Workspaces(0).CommitTrans(); }), 3034);
    EXPECT_EQ(mails(), 0);
    EXPECT_EQ(files(), Names{"Test.Mdb"});
}

TEST_F(AtRestTest, ADatabaseLetGoWithoutCloseIsClosed)
{
    {
        Database database = opened();
        addMail(database, u"2000", 1);
        DBEngine::Workspaces(0).BeginTrans();
        addMail(database, u"2000", 2);
    }
    EXPECT_EQ(files(), Names{"Test.Mdb"});
    EXPECT_EQ(mails(), 1);
}

TEST_F(AtRestTest, AnotherFileUnderTheNameIsTheOneThatIsOpened)
{
    createTables(path("Other.Mdb"));
    DBEngine::Session session;
    Database database = opened();
    EXPECT_EQ(rows(database, Statement{u"SELECT * FROM tblMail"}), 0);
    database.Close();
    database = DBEngine::OpenDatabase(path("Other.Mdb"));
    addMail(database, u"2000", 1);
    database.Close();
    DBEngine::Rest();
    replaceFile(folder_ / "Other.Mdb", folder_ / "Test.Mdb");
    EXPECT_EQ(mails(), 1);
}

TEST_F(AtRestTest, AReadingNeverChangesTheFile)
{
    Database database = opened();
    addMail(database, u"2000", 1);
    database.Close();
    const std::string before = bytes();
    const auto time = std::filesystem::last_write_time(folder_ / "Test.Mdb");
    int writes = 0;
    hooks::setFileProbe([&](FileOperation operation, const Path&) {
        writes += operation != FileOperation::Read && operation != FileOperation::Open;
    });
    {
        DBEngine::Session session;
        EXPECT_EQ(mails(), 1);
    }
    EXPECT_EQ(mails(), 1);
    hooks::setFileProbe({});
    EXPECT_EQ(writes, 0);
    EXPECT_EQ(bytes(), before);
    EXPECT_EQ(std::filesystem::last_write_time(folder_ / "Test.Mdb"), time);
}

class AtRestReadOnlyTest : public DaoTest, public testing::WithParamInterface<bool> {
protected:
    Path guarded() const { return GetParam() ? folder_.path() : folder_ / "Test.Mdb"; }
    ~AtRestReadOnlyTest() override { chmod(guarded().c_str(), 0755); }
};

TEST_P(AtRestReadOnlyTest, CanBeReadButNotWritten)
{
    Database database = opened();
    addMail(database, u"2000", 1);
    database.Close();
    ASSERT_EQ(chmod(guarded().c_str(), GetParam() ? 0555 : 0444), 0);
    hooks::setFileProbe([](FileOperation operation, const Path& path) {
        if (operation != FileOperation::Open && operation != FileOperation::Read &&
            operation != FileOperation::List)
            throw std::system_error(EROFS, std::generic_category(), path.string());
    });
    const std::string before = bytes();
    DBEngine::Session session;
    EXPECT_EQ(mails(), 1);
    database = opened();
    EXPECT_EQ(errorOf([&] { addMail(database, u"2000", 2); }), 3027);
    EXPECT_EQ(errorOf([&] { inTransaction([&] { addMail(database, u"2000", 2); }); }), 3027);
    EXPECT_EQ(errorOf([&] { database.TableDefs().Append(mailTable(database)); }), 3010);
    database.Close();
    DBEngine::Rest();
    EXPECT_EQ(bytes(), before);
    EXPECT_EQ(files(), Names{"Test.Mdb"});
}

INSTANTIATE_TEST_SUITE_P(FileAndFolder, AtRestReadOnlyTest, testing::Bool());

}
}
