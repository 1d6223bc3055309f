// Transactions that share one commit of the file.
#include "dao_fixture.h"
#include "platform/dao/alone.h"
#include "platform/system/test_hooks.h"
#include "support/child_process.h"

namespace tolvek::test {
namespace {

constexpr std::chrono::hours kLong{1};

class CommitGroupTest : public DaoTest {
protected:
    // What the file holds if the process is killed after the work.
    int mailsAfterAKillAfter(const std::function<void()>& work)
    {
        EXPECT_EQ(inChild([&]() -> int {
                      const DBEngine::Session session;
                      work();
                      leaveProcess(42);
                  }),
                  42);
        return mails();
    }
    static void add(Database& database, Int16 number)
    {
        DBEngine::Workspaces(0).BeginTrans();
        addMail(database, u"2000", number);
        DBEngine::Workspaces(0).CommitTrans();
    }
    static void addTwo(Database& database)
    {
        add(database, 1);
        add(database, 2);
    }
    static int rowsIn(Database& database)
    {
        return rows(database, Statement{u"SELECT * FROM tblMail"});
    }
};

TEST_F(CommitGroupTest, AGroupThatEndedSurvivesAKill)
{
    EXPECT_EQ(mailsAfterAKillAfter([this] {
                  const DBEngine::CommitGroup group(kLong);
                  Database database = opened();
                  addTwo(database);
                  EXPECT_EQ(rowsIn(database), 2);
              }),
              2);
}

TEST_F(CommitGroupTest, AKillInTheOpenGroupLosesItsTransactions)
{
    EXPECT_EQ(mailsAfterAKillAfter([this] {
                  Database database = opened();
                  const DBEngine::CommitGroup group(kLong);
                  addTwo(database);
                  leaveProcess(42);
              }),
              0);
}

TEST_F(CommitGroupTest, AnOldGroupEndsWithTheTransactionThatFindsItOld)
{
    EXPECT_EQ(mailsAfterAKillAfter([this] {
                  Database database = opened();
                  const DBEngine::CommitGroup group(std::chrono::milliseconds::zero());
                  addTwo(database);
                  leaveProcess(42);
              }),
              2);
}

TEST_F(CommitGroupTest, ARollbackLeavesTheOtherTransactionsOfTheGroup)
{
    const DBEngine::Session session;
    Database database = opened();
    {
        const DBEngine::CommitGroup group(kLong);
        add(database, 1);
        DBEngine::Workspaces(0).BeginTrans();
        addMail(database, u"2000", 2);
        DBEngine::Workspaces(0).Rollback();
        EXPECT_EQ(rowsIn(database), 1);
        DBEngine::Workspaces(0).BeginTrans();
        addMail(database, u"2000", 3);
        database.Close();
        database = opened();
        EXPECT_EQ(rowsIn(database), 1);
        add(database, 4);
    }
    EXPECT_EQ(rowsIn(database), 2);
}

TEST_F(CommitGroupTest, BeingPutAtRestEndsTheGroupAndTheNextTransactionBeginsAnother)
{
    EXPECT_EQ(mailsAfterAKillAfter([this] {
                  Database database = opened();
                  const DBEngine::CommitGroup group(kLong);
                  addTwo(database);
                  DBEngine::Workspaces(0).BeginTrans();
                  addMail(database, u"2000", 3);
                  putAllAtRest();
                  EXPECT_EQ(files(), Names{"Test.Mdb"});
                  add(database, 4);
                  leaveProcess(42);
              }),
              2);
}

TEST_F(CommitGroupTest, AnEndOfTheSessionOrOfTheProgramEndsTheGroup)
{
    const DBEngine::CommitGroup group(kLong);
    {
        const DBEngine::Session session;
        Database database = opened();
        addTwo(database);
    }
    EXPECT_EQ(files(), Names{"Test.Mdb"});
    EXPECT_EQ(mailsAfterAKillAfter([this] {
                  static Database database = opened();
                  add(database, 3);
                  DBEngine::Abandon();
                  leaveProcess(42);
              }),
              3);
}

TEST_F(CommitGroupTest, ACommitThatFailsIsTriedAgainWithTheNext)
{
    const DBEngine::Session session;
    Database database = opened();
    {
        DBEngine::CommitGroup group(kLong);
        addTwo(database);
        hooks::setFileProbe([](FileOperation operation, const Path&) {
            if (operation == FileOperation::Write)
                throw std::system_error(std::make_error_code(std::errc::no_space_on_device));
        });
        EXPECT_EQ(errorOf([&] { group.end(); }), 61);
        hooks::setFileProbe({});
    }
    {
        const DBEngine::CommitGroup group(kLong);
        add(database, 3);
    }
    const int there = rowsIn(database);
    EXPECT_TRUE(there == 1 || there == 3) << there; // the engine may have rolled back
    database.Close();
}

// An ungrouped transaction is durable at its commit, also after a group.
TEST_F(CommitGroupTest, AfterTheGroupEachTransactionIsCommittedByItself)
{
    EXPECT_EQ(mailsAfterAKillAfter([this] {
                  Database database = opened();
                  {
                      const DBEngine::CommitGroup group(kLong);
                      add(database, 1);
                  }
                  add(database, 2);
                  leaveProcess(42);
              }),
              2);
}

}
}
