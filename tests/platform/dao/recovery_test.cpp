// A program that dies at any moment loses no committed row.
#include "dao_fixture.h"
#include "platform/system/test_hooks.h"

#include "platform/dao/engine.h"
#include "support/child_process.h"

#include <csignal>

namespace tolvek::test {
namespace {

using RecoveryTest = DaoTest;

TEST_F(RecoveryTest, CommitsInASessionSurviveAKill)
{
    ASSERT_EQ(inChild([&]() -> int {
                  DBEngine::Session session;
                  Database database = opened();
                  addMail(database, u"2000", 1);
                  inTransaction([&] { addMail(database, u"2000", 2); });
                  DBEngine::Workspaces(0).BeginTrans();
                  addMail(database, u"2000", 3);
                  return kill(getpid(), SIGKILL);
              }),
              -1);
    EXPECT_EQ(files(), (Names{"Test.Mdb", "Test.Mdb-wal"}));
    EXPECT_EQ(mails(), 2);
    EXPECT_EQ(files(), Names{"Test.Mdb"});
    EXPECT_EQ(journalManner(), 1);
}

TEST_F(RecoveryTest, OutsideOfASessionAKilledTransactionIsTakenBack)
{
    ASSERT_EQ(inChild([&]() -> int {
                  Database database = opened();
                  addMail(database, u"2000", 1);
                  DBEngine::Workspaces(0).BeginTrans();
                  addMail(database, u"2000", 2);
                  _exit(7);
              }),
              7);
    EXPECT_EQ(mails(), 1);
    EXPECT_EQ(files(), Names{"Test.Mdb"});
}

// Dies before the n-th operation that changes something; n counts up from the first
// until the work succeeds.
TEST_F(RecoveryTest, AtEveryOperationAKillLeavesAllCommitsAndNoHalf)
{
    const std::string before = bytes();
    const auto workThatDies = [&](int fatal) {
        int count = 0, committed = 0;
        hooks::setFileProbe([&](FileOperation operation, const Path&) {
            const bool changes =
                operation != FileOperation::Read && operation != FileOperation::Open;
            if (changes && ++count == fatal) _exit(10 + committed);
        });
        {
            DBEngine::Session session;
            Database database = opened();
            for (int number = 1; number <= 2; ++number) {
                inTransaction([&] {
                    addMail(database, u"2000", number);
                    addMail(database, u"2001", number);
                });
                ++committed;
            }
            database.Close();
        }
        return kGotThrough;
    };
    int died = 0;
    for (int fatal = 1;; ++fatal, ++died) {
        for (const std::string& name : files())
            removeFile(folder_ / name);
        writeBytes(folder_ / "Test.Mdb", before);
        const int code = inChild([&] { return workThatDies(fatal); });
        if (code == kGotThrough) break;
        ASSERT_GE(code, 10);
        const int found = mails();
        ASSERT_TRUE(found == 2 * (code - 10) || found == 2 * (code - 9)) << fatal << ": " << found;
        ASSERT_EQ(files(), Names{"Test.Mdb"});
        ASSERT_EQ(journalManner(), 1);
    }
    EXPECT_GT(died, 15);
    EXPECT_EQ(mails(), 4);
}

TEST_F(RecoveryTest, ALogOfAnotherFileIsNotPlayedIn)
{
    const std::string atRest = bytes();
    ASSERT_EQ(inChild([&]() -> int {
                  DBEngine::Session session;
                  Database database = opened();
                  addMail(database, u"2000", 1);
                  _exit(7);
              }),
              7);
    writeBytes(folder_ / "Test.Mdb", atRest);
    EXPECT_EQ(mails(), 0);
    EXPECT_EQ(files(), Names{"Test.Mdb"});
}

class RecoveryReadOnlyTest : public DaoTest {
protected:
    // A mail that only the log has.
    void SetUp() override
    {
        DaoTest::SetUp();
        ASSERT_EQ(inChild([&]() -> int {
                      DBEngine::Session session;
                      Database database = opened();
                      addMail(database, u"2000", 1);
                      _exit(7);
                  }),
                  7);
    }
    void protect()
    {
        std::filesystem::permissions(folder_ / "Test.Mdb", std::filesystem::perms::owner_read);
    }
};

TEST_F(RecoveryReadOnlyTest, TheLogBesideTheFileIsShownAndNothingIsChanged)
{
    protect();
    const std::string before = bytes(), log = readBytes(folder_ / "Test.Mdb-wal");
    EXPECT_EQ(mails(), 1);
    Database database = opened();
    EXPECT_EQ(errorOf([&] { addMail(database, u"2000", 2); }), 3027);
    database.Close();
    EXPECT_EQ(errorOf([&] { DBEngine::CompactDatabase(path(), path("Copy.Mdb")); }), 0);
    EXPECT_EQ(bytes(), before);
    EXPECT_EQ(readBytes(folder_ / "Test.Mdb-wal"), log);
    database = DBEngine::OpenDatabase(path("Copy.Mdb"));
    EXPECT_EQ(rows(database, Statement{u"SELECT * FROM tblMail"}), 1);
    database.Close();
    DBEngine::Abandon(); // drops the kept copy
    std::filesystem::permissions(folder_ / "Test.Mdb", std::filesystem::perms::owner_all);
    EXPECT_EQ(mails(), 1);
}

// Its own name, not that of the private copy.
TEST_F(RecoveryReadOnlyTest, TheFileBearsItsNameInEveryReport)
{
    protect();
    EXPECT_EQ(Engine::instance().acquire(folder_ / "Test.Mdb")->path(), folder_ / "Test.Mdb");
    DBEngine::Abandon();
    std::filesystem::permissions(folder_ / "Test.Mdb", std::filesystem::perms::owner_all);
    std::string damaged = bytes();
    damaged.replace(100, 400, 400, 'x');
    writeBytes(folder_ / "Test.Mdb", damaged);
    removeFile(folder_ / "Test.Mdb-wal");
    writeBytes(folder_ / "Test.Mdb-wal", std::string(64, 'x')); // a log without a frame
    protect();
    EXPECT_EQ(errorTextOf([&] { opened(); }), errorText(3343, path("Test.Mdb")));
}

}
}
