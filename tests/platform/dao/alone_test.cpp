// Two programs and one database: what one of them sees while the other has locked it,
// and what happens when the file is exchanged under an open database.
#include "dao_fixture.h"
#include "platform/dao/alone.h"
#include "platform/dao/connection.h"
#include "platform/dao/test_hooks.h"
#include "support/other_program.h"

namespace tolvek::test {
namespace {

class AloneTest : public DaoTest {
protected:
    AloneTest() { hooks::setPatience(std::chrono::milliseconds(20)); }
    ~AloneTest() override { hooks::setPatience({}); }

    int errorOfOpening() const
    {
        return errorOf([&] { opened(); });
    }
    int errorOfWriting() const
    {
        return errorOf([&] {
            DBEngine::Session session;
            Database database = opened();
            database.Execute(Statement{u"DELETE FROM tblMail"}, dbFailOnError);
            addMail(database, u"2001", 1);
        });
    }
    int errorOfKeeping(const std::string& name, Alone::With with) const
    {
        return errorOf([&] { Alone alone(path(name), with); });
    }
    // Replaces the database by another sound one, with one mail of 1999.
    void exchange()
    {
        createTables(path("Other.Mdb"));
        Database other = DBEngine::OpenDatabase(path("Other.Mdb"));
        addMail(other, u"1999", 1);
        other.Close();
        DBEngine::Rest();
        replaceFile(folder_ / "Other.Mdb", folder_ / "Test.Mdb");
    }
    static constexpr int kLocked = 3356;
    static constexpr Alone::With kBoth[] = {Alone::With::Database, Alone::With::File};
};

TEST_F(AloneTest, OtherProgramsFindTheDatabaseLockedUntilTheEnd)
{
    OtherProgram opening([&] { return errorOfOpening(); });
    OtherProgram keeping([&] { return errorOfKeeping("Test.Mdb", Alone::With::Database); });
    {
        const Alone alone(path());
        EXPECT_EQ(opening.run(), kLocked);
        EXPECT_EQ(keeping.run(), kLocked);
        Database database = opened();
        inTransaction([&] { addMail(database, u"2000", 1); });
        database.Close();
        EXPECT_EQ(opening.run(), kLocked);
    }
    EXPECT_EQ(opening.run(), 0);
    EXPECT_EQ(keeping.run(), 0);
    EXPECT_EQ(mails(), 1);
    EXPECT_EQ(files(), Names{"Test.Mdb"});
}

TEST_F(AloneTest, AnythingCanBeKeptAsAFile)
{
    OtherProgram keeping([&] { return errorOfKeeping("Any", Alone::With::File); });
    for (const char* content : {"no database", "Standard Jet DB", ""}) {
        writeBytes(folder_ / "Any", content);
        const Alone alone(path("Any"), Alone::With::File);
        EXPECT_EQ(keeping.run(), kLocked);
        alone.confirm();
        EXPECT_EQ(readBytes(folder_ / "Any"), content);
    }
    EXPECT_EQ(files(), (Names{"Any", "Test.Mdb"}));
    EXPECT_EQ(errorOfKeeping("Any", Alone::With::Database), 0) << "which isn't a database";
    const Alone missing(path("None"));
    missing.confirm();
}

TEST_F(AloneTest, ItIsLockedWhileAnotherProgramIsAtWorkOnIt)
{
    Signal ready;
    ChildProcess other([&] {
        DBEngine::Session session;
        Database database = opened();
        addMail(database, u"2000", 1);
        ready.send();
        return Signal().wait();
    });
    ready.wait();
    for (const auto with : kBoth)
        EXPECT_EQ(errorOfKeeping("Test.Mdb", with), kLocked);
}

TEST_F(AloneTest, ACompactionGoesOnInsideWithTheLock)
{
    OtherProgram opening([&] { return errorOfOpening(); });
    DBEngine::Session session;
    Database database = opened();
    addMail(database, u"2000", 1);
    database.Close();
    const Alone alone(path());
    DBEngine::CompactDatabase(path(), path("New.Mdb"));
    EXPECT_EQ(opening.run(), kLocked);
    alone.confirm();
    EXPECT_EQ(files(), (Names{"New.Mdb", "Test.Mdb"}));
}

// Closing any descriptor of the file drops the locks of the process.
TEST_F(AloneTest, WhatWasWrittenWhileTheSystemHadDroppedTheLockIsSeen)
{
    OtherProgram opening([&] { return errorOfOpening(); });
    OtherProgram writing([&] { return errorOfWriting(); });
    for (const auto with : kBoth) {
        const Alone alone(path(), with);
        readFile(folder_ / "Test.Mdb");
        alone.confirm();
        EXPECT_EQ(opening.run(), kLocked);
        readFile(folder_ / "Test.Mdb");
        ASSERT_EQ(writing.run(), 0);
        EXPECT_EQ(errorOf([&] { alone.confirm(); }), kLocked);
    }
}

TEST_F(AloneTest, AnotherFileInThePlaceIsSeen)
{
    for (const auto with : kBoth) {
        const Alone alone(path(), with);
        exchange();
        EXPECT_EQ(errorOf([&] { alone.confirm(); }), kLocked);
        EXPECT_EQ(errorOfKeeping("Test.Mdb", Alone::With::File), kLocked);
        alone.end();
        EXPECT_EQ(errorOfKeeping("Test.Mdb", Alone::With::File), 0);
    }
}

// As left by a rotation that was cut off.
TEST_F(AloneTest, ASecondNameOfTheFileIsTheSameFile)
{
    linkFile(folder_ / "Test.Mdb", folder_ / "Test.Mdb.Bak");
    const Alone alone(path());
    EXPECT_EQ(errorOfKeeping("Test.Mdb.Bak", Alone::With::File), 0);
}

TEST_F(AloneTest, AWaitForTheUserLetsOthersInAndWhatTheyDidIsSeen)
{
    OtherProgram writing([&] { return errorOfWriting(); });
    DBEngine::Session session;
    const Alone alone(path());
    Database database = opened();
    DBEngine::Workspaces(0).BeginTrans();
    putAllAtRest();
    EXPECT_TRUE(database.isOpen());
    EXPECT_EQ(errorOf([] { DBEngine::Workspaces(0).CommitTrans(); }), 3034);
    alone.confirm();
    putAllAtRest();
    EXPECT_EQ(writing.run(), 0);
    EXPECT_EQ(errorOf([&] { alone.confirm(); }), kLocked);
    EXPECT_EQ(rows(database, Statement{u"SELECT * FROM tblMail"}), 1);
}

class AloneExchangedTest : public AloneTest, public testing::WithParamInterface<bool> {};

// Also within a command, whose log would end up beside the new file.
TEST_P(AloneExchangedTest, WhatIsOpenReadsOnAndWritesNowhere)
{
    std::optional<DBEngine::Session> session;
    if (GetParam()) session.emplace();
    Database database = opened();
    EXPECT_EQ(rows(database, Statement{u"SELECT * FROM tblMail"}), 0);
    exchange();
    EXPECT_EQ(rows(database, Statement{u"SELECT * FROM tblMail"}), 0);
    EXPECT_EQ(errorOf([&] { addMail(database, u"2000", 1); }), kLocked);
    EXPECT_EQ(errorOf([&] { inTransaction([&] { addMail(database, u"2000", 2); }); }), kLocked);
    database.Close();
    database = opened();
    addMail(database, u"2000", 3);
    database.Close();
    session.reset();
    EXPECT_EQ(mails(), 2);
    EXPECT_EQ(files(), Names{"Test.Mdb"});
}

// The first write of a command opens its log; later ones find it open.
TEST_F(AloneTest, AFileThatIsExchangedInTheMiddleOfACommandIsntWritten)
{
    createTables(path("Other.Mdb"));
    DBEngine::Rest();
    DBEngine::Session session;
    Database database = opened();
    inTransaction([&] { addMail(database, u"2000", 1); });
    replaceFile(folder_ / "Other.Mdb", folder_ / "Test.Mdb");
    EXPECT_EQ(errorOf([&] { inTransaction([&] { addMail(database, u"2000", 2); }); }), kLocked);
    database.Close();
}

INSTANTIATE_TEST_SUITE_P(InACommandAndOutside, AloneExchangedTest, testing::Bool());

TEST_F(AloneTest, WhatCantBeWrittenIsLeft)
{
    OtherProgram opening([&] { return errorOfOpening(); });
    std::filesystem::permissions(folder_ / "Test.Mdb", std::filesystem::perms::owner_read);
    const Alone alone(path());
    EXPECT_EQ(opening.run(), 0);
    alone.confirm();
}

}
}
