// Every operation of the engine on the disk can be made to fail.
#include "dao_fixture.h"
#include "platform/system/test_hooks.h"

#include <cerrno>
#include <sqlite3.h>

namespace tolvek::test {
namespace {

class FailingDiskTest : public DaoTest {
protected:
    static void failAt(FileOperation wanted, std::errc error)
    {
        hooks::setFileProbe([=](FileOperation operation, const Path& path) {
            if (operation == wanted)
                throw std::system_error(std::make_error_code(error), path.string());
        });
    }
};

TEST_F(FailingDiskTest, AFullDiskIs61AndAFailingOne57)
{
    for (const FileOperation operation :
         {FileOperation::Write, FileOperation::Create, FileOperation::Flush}) {
        Database database = opened();
        failAt(operation, std::errc::no_space_on_device);
        EXPECT_EQ(errorOf([&] { addMail(database, u"2000", 1); }), 61) << int(operation);
        failAt(operation, std::errc::io_error);
        EXPECT_EQ(errorOf([&] { addMail(database, u"2000", 1); }), 57) << int(operation);
        hooks::setFileProbe({});
        database.Close();
        EXPECT_EQ(mails(), 0);
    }
}

TEST_F(FailingDiskTest, AFileThatCannotBeOpenedOrReadIs57)
{
    failAt(FileOperation::Open, std::errc::io_error);
    EXPECT_EQ(errorOf([&] { opened(); }), 57);
    failAt(FileOperation::Read, std::errc::io_error);
    EXPECT_EQ(errorOf([&] { opened(); }), 57);
    hooks::setFileProbe({});
    EXPECT_EQ(mails(), 0);
}

TEST_F(FailingDiskTest, WorkThatAFullDiskUndidCannotBeCommittedInPart)
{
    DBEngine::Session session;
    Database database = opened();
    addMail(database, u"2000", 1);
    Workspace workspace = DBEngine::Workspaces(0);
    workspace.BeginTrans();
    addMail(database, u"2000", 2);
    failAt(FileOperation::Write, std::errc::no_space_on_device);
    EXPECT_EQ(errorOf([&] { workspace.CommitTrans(); }), 61);
    hooks::setFileProbe({});
    database.Close();
    EXPECT_EQ(mails(), 1);
}

TEST_F(FailingDiskTest, ACloseThatCannotFlushTellsItAndLosesNothing)
{
    Database database = opened();
    addMail(database, u"2000", 1);
    failAt(FileOperation::FlushFolder, std::errc::io_error);
    EXPECT_EQ(errorOf([&] { database.Close(); }), 57);
    hooks::setFileProbe({});
    EXPECT_FALSE(database.isOpen());
    EXPECT_EQ(mails(), 1);
}

TEST_F(FailingDiskTest, ASessionThatCannotComeToRestLeavesItsLogToTheNextOpening)
{
    {
        DBEngine::Session session;
        Database database = opened();
        addMail(database, u"2000", 1);
        database.Close();
        failAt(FileOperation::Flush, std::errc::io_error);
    }
    hooks::setFileProbe({});
    EXPECT_EQ(mails(), 1);
    EXPECT_EQ(files(), Names{"Test.Mdb"});
}

}
}
