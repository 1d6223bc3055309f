// Opening, creating, workspaces: what a caller sees of the engine.
#include "dao_fixture.h"
#include "platform/dao/test_hooks.h"

#include "platform/dao/connection.h"
#include "support/child_process.h"

namespace tolvek::test {
namespace {

using EngineTest = DaoTest;

TEST_F(EngineTest, AMissingFileIs3024WithItsName)
{
    EXPECT_EQ(errorTextOf([&] { DBEngine::OpenDatabase(path("None.Mdb")); }),
              u"ファイル '" + path("None.Mdb") + u"' が見つかりませんでした。");
    EXPECT_EQ(errorOf([&] { DBEngine::OpenDatabase(pathText(folder_.path())); }), 3024);
    EXPECT_FALSE(fileExists(folder_ / "None.Mdb"));
}

TEST_F(EngineTest, WhatIsNoDatabaseIs3343AtOnceAndStaysAsItIs)
{
    const std::string whole = bytes();
    std::string wrongHeader = whole;
    wrongHeader[16] = 7;
    const std::string noDatabases[] = {"",
                                       "x",
                                       std::string(300, 'x'),
                                       std::string(9000, '\0'),
                                       whole.substr(0, whole.size() / 2 / 4096 * 4096),
                                       wrongHeader,
                                       "Standard Jet DB" + std::string(8000, 'j')};
    for (const std::string& content : noDatabases) {
        writeBytes(folder_ / "Bad.Mdb", content);
        EXPECT_EQ(errorOf([&] { DBEngine::OpenDatabase(path("Bad.Mdb")); }), 3343)
            << content.size();
        EXPECT_EQ(readBytes(folder_ / "Bad.Mdb"), content);
    }
}

// What a file may make the engine do is bounded, whatever its schema says.
TEST_F(EngineTest, ViewsOfAFileArentRunAndItsSchemaIsntTrusted)
{
    DBEngine::Rest();
    const auto connection = Connection::open(folder_ / "Test.Mdb");
    connection->pragma(u"CREATE VIEW v AS SELECT Book_Name FROM tblBook");
    EXPECT_NE(errorOf([&] { connection->query(TextView(u"SELECT * FROM v"))->step(); }), 0);
    EXPECT_EQ(connection->pragma(u"PRAGMA trusted_schema"), u"0");
    EXPECT_EQ(connection->pragma(u"PRAGMA cell_size_check"), u"1");
    Text pieces = u"SELECT 1";
    for (int piece = 0; piece < 10; ++piece)
        pieces += u" UNION SELECT 1";
    EXPECT_NE(errorOf([&] { connection->pragma(pieces); }), 0);
}

TEST_F(EngineTest, AnotherMakersFileOpensAllTheSame)
{
    ASSERT_EQ(inChild([&]() -> int {
                  sqlite3* foreign = nullptr;
                  sqlite3_open((folder_ / "Foreign.db").c_str(), &foreign);
                  return sqlite3_exec(foreign,
                                      "CREATE TABLE book (id INTEGER PRIMARY KEY, name TEXT, size);"
                                      "INSERT INTO book VALUES (5, '本', 2.5), (3, NULL, 7)",
                                      nullptr, nullptr, nullptr);
              }),
              0);
    Database database = DBEngine::OpenDatabase(path("Foreign.db"));
    Recordset set = database.OpenRecordset(Statement{u"SELECT * FROM book"});
    EXPECT_EQ(set.field(u"id").int16(), 3);
    EXPECT_TRUE(set.field(u"name").isNull());
    set.MoveNext();
    EXPECT_EQ(set.field(u"name").text(), u"本");
    EXPECT_EQ(set.field(u"size").text(), u"2.5");
}

TEST_F(EngineTest, CreatingOverAFileOrInNoFolder)
{
    const std::string before = bytes();
    Workspace workspace = DBEngine::Workspaces(0);
    EXPECT_EQ(errorOf([&] { workspace.CreateDatabase(path(), u""); }), 3204);
    EXPECT_EQ(errorOf([&] { workspace.CreateDatabase(path("none/New.Mdb"), u""); }), 76);
    EXPECT_EQ(bytes(), before);
    EXPECT_EQ(errorOf([] { DBEngine::Workspaces(1); }), 3265);
}

TEST_F(EngineTest, AFileHeldByAnotherProgramIs3356AtOnce)
{
    int ready[2], done[2];
    ASSERT_EQ(pipe(ready) + pipe(done), 0);
    const pid_t holder = fork();
    if (holder == 0) {
        DBEngine::Session session;
        Database database = opened();
        addMail(database, u"2000", 1);
        char byte = 'r';
        const bool answered = write(ready[1], &byte, 1) == 1 && read(done[0], &byte, 1) == 1;
        _exit(answered ? 0 : 1);
    }
    char byte = 0;
    ASSERT_EQ(read(ready[0], &byte, 1), 1);
    EXPECT_EQ(errorOf([&] { opened(); }), 3356);
    EXPECT_NE(errorTextOf([&] { opened(); }).find(path()), Text::npos);
    ASSERT_EQ(write(done[1], &byte, 1), 1);
    waitpid(holder, nullptr, 0);
    EXPECT_EQ(mails(), 1);
}

// The other program takes its lock between our opening and our writing.
TEST_F(EngineTest, AFileThatBecomesBusyIs3356AfterTheWait)
{
    hooks::setPatience(std::chrono::milliseconds(20));
    Database database = opened();
    int ready[2], done[2];
    ASSERT_EQ(pipe(ready) + pipe(done), 0);
    const pid_t holder = fork();
    if (holder == 0) {
        sqlite3* other = nullptr;
        sqlite3_open((folder_ / "Test.Mdb").c_str(), &other);
        sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr);
        char byte = 'r';
        const bool answered = write(ready[1], &byte, 1) == 1 && read(done[0], &byte, 1) == 1;
        _exit(answered ? 0 : 1);
    }
    char byte = 0;
    ASSERT_EQ(read(ready[0], &byte, 1), 1);
    hooks::setPatience({});
    EXPECT_EQ(errorOf([&] { inTransaction([&] { addMail(database, u"2000", 1); }); }), 3356);
    {
        DBEngine::Session session;
        EXPECT_EQ(errorOf([&] { addMail(database, u"2000", 1); }), 3356);
    }
    ASSERT_EQ(write(done[1], &byte, 1), 1);
    waitpid(holder, nullptr, 0);
    database.Close();
    database = opened();
    inTransaction([&] { addMail(database, u"2000", 2); });
    EXPECT_EQ(mails(), 1);
}

TEST_F(EngineTest, AHandleForNothingIs3420AndClosingItIsSilent)
{
    Database none;
    EXPECT_EQ(errorOf([&] { none.OpenRecordset(Statement{u"SELECT * FROM tblMail"}); }), 3420);
    EXPECT_EQ(errorOf([&] { none.Execute(Statement{u"DELETE FROM tblMail"}, 0); }), 3420);
    EXPECT_EQ(errorOf([&] { none.TableDefs().names(); }), 3420);
    EXPECT_FALSE(none.isOpen());
    none.Close();
    Database database = opened();
    Database copy = database;
    copy.Close();
    copy.Close();
    EXPECT_FALSE(database.isOpen());
    EXPECT_EQ(errorOf([&] { database.Execute(Statement{u"DELETE FROM tblMail"}, 0); }), 3420);
}

TEST_F(EngineTest, ATransactionIsWholeOrNothing)
{
    Database database = opened();
    Workspace workspace = DBEngine::Workspaces(0);
    workspace.BeginTrans();
    addMail(database, u"2000", 1);
    workspace.Rollback();
    EXPECT_EQ(mails(), 0);
    inTransaction([&] { addMail(database, u"2000", 2); });
    EXPECT_EQ(mails(), 1);
    EXPECT_EQ(errorOf([&] { workspace.CommitTrans(); }), 3034);
    EXPECT_EQ(errorOf([&] { workspace.Rollback(); }), 3034);
}

TEST_F(EngineTest, ClosingRollsBackAndTheNextTransactionStartsAnew)
{
    Database database = opened();
    EXPECT_EQ(errorOf([&] {
                  inTransaction([&] {
                      addMail(database, u"2000", 1);
                      addMail(database, u"2000", 1);
                  });
              }),
              3022);
    database.Close();
    EXPECT_EQ(errorOf([] { DBEngine::Workspaces(0).CommitTrans(); }), 3034);
    EXPECT_EQ(mails(), 0);
    database = opened();
    inTransaction([&] { addMail(database, u"2000", 2); });
    EXPECT_EQ(errorOf([] { DBEngine::Workspaces(0).CommitTrans(); }), 3034);
    EXPECT_EQ(mails(), 1);
}

// A statement that is refused before it reaches the file leaves an empty open
// transaction.
TEST_F(EngineTest, ATransactionInWhichNothingWasDoneEndsWithTheDatabaseToo)
{
    DBEngine::Session session;
    Database database = opened();
    EXPECT_EQ(errorOf([&] { inTransaction([&] { addMail(database, u"a'b", 1); }); }), 3075);
    database.Close();
    database = opened();
    inTransaction([&] { addMail(database, u"2000", 2); });
    EXPECT_EQ(errorOf([] { DBEngine::Workspaces(0).CommitTrans(); }), 3034);
    EXPECT_EQ(rows(database, Statement{u"SELECT * FROM tblMail"}), 1);
}

TEST_F(EngineTest, OneTransactionSpansSeveralDatabases)
{
    createTables(path("Other.Mdb"));
    Database one = opened(), two = DBEngine::OpenDatabase(path("Other.Mdb"));
    Workspace workspace = DBEngine::Workspaces(0);
    workspace.BeginTrans();
    addMail(one, u"2000", 1);
    addMail(two, u"2000", 1);
    workspace.Rollback();
    EXPECT_EQ(rows(two, Statement{u"SELECT * FROM tblMail"}), 0);
    inTransaction([&] {
        inTransaction([&] { addMail(one, u"2000", 1); });
        addMail(two, u"2000", 1);
    });
    EXPECT_EQ(rows(one, Statement{u"SELECT * FROM tblMail"}), 1);
    EXPECT_EQ(rows(two, Statement{u"SELECT * FROM tblMail"}), 1);
}

TEST_F(EngineTest, AStatementIsWholeOrNothingWithinATransaction)
{
    Database database = opened();
    addMail(database, u"2000", 1);
    addMail(database, u"2000", 2);
    inTransaction([&] {
        EXPECT_EQ(
            errorOf([&] { database.Execute(Statement{u"UPDATE tblMail SET Mail_No = 1"}, 128); }),
            3022);
        addMail(database, u"2000", 3);
    });
    EXPECT_EQ(mails(), 3);
}

TEST_F(EngineTest, AbandonLetsEverythingGoAndNothingCrashesBehindIt)
{
    DBEngine::Session session;
    Database database = opened();
    addMail(database, u"2000", 1);
    Recordset set = database.OpenRecordset(Statement{u"SELECT * FROM tblMail"});
    DBEngine::Workspaces(0).BeginTrans();
    addMail(database, u"2000", 2);
    DBEngine::Abandon();
    EXPECT_EQ(files(), Names{"Test.Mdb"});
    EXPECT_EQ(journalManner(), 1);
    EXPECT_EQ(errorOf([&] { set.field(0); }), 3420);
    EXPECT_EQ(errorOf([&] { addMail(database, u"2000", 3); }), 3420);
    EXPECT_EQ(errorOf([] { DBEngine::Workspaces(0).CommitTrans(); }), 3034);
    database.Close();
    EXPECT_EQ(mails(), 1);
}

}
}
