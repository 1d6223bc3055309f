#include "dao_fixture.h"
#include "platform/system/test_hooks.h"

#include "support/child_process.h"

namespace tolvek::test {
namespace {

class CompactTest : public DaoTest {
protected:
    CompactTest()
    {
        Database database = opened();
        for (int i = 1; i <= 50; ++i)
            addMail(database, u"2000", i);
        database.Execute(Statement{u"DELETE FROM tblMail WHERE Mail_No <> 7"}, dbFailOnError);
        database.Close();
    }
    // Reads change nothing, and the removal of leftovers must not fail.
    static bool isSparedFrom(FileOperation failing)
    {
        return failing == FileOperation::Read || failing == FileOperation::List ||
               failing == FileOperation::Remove;
    }
    int errorOfCompacting() const
    {
        return errorOf([&] { DBEngine::CompactDatabase(path(), path("New.Mdb")); });
    }
};

TEST_F(CompactTest, TheCopyHasEverythingAndTheSourceStays)
{
    const std::string before = bytes();
    EXPECT_EQ(errorOfCompacting(), 0);
    EXPECT_EQ(bytes(), before);
    EXPECT_EQ(files(), (Names{"New.Mdb", "Test.Mdb"}));
    Database copy = DBEngine::OpenDatabase(path("New.Mdb"));
    EXPECT_EQ(rows(copy, Statement{u"SELECT * FROM tblMail WHERE Mail_Subject = 'S'"}), 1);
    EXPECT_EQ(errorOf([&] { addMail(copy, u"2000", 7); }), 3022);
    EXPECT_EQ(errorOf([&] { addMail(copy, u"", 8); }), 3315);
}

TEST_F(CompactTest, AMissingSourceAPresentTargetAndNoFolder)
{
    EXPECT_EQ(errorOf([&] { DBEngine::CompactDatabase(path("None.Mdb"), path("New.Mdb")); }), 3024);
    writeBytes(folder_ / "There.Mdb", "x");
    EXPECT_EQ(errorOf([&] { DBEngine::CompactDatabase(path(), path("There.Mdb")); }), 3204);
    EXPECT_EQ(readBytes(folder_ / "There.Mdb"), "x");
    EXPECT_EQ(errorOf([&] { DBEngine::CompactDatabase(path(), path("none/New.Mdb")); }), 76);
    EXPECT_EQ(files(), (Names{"Test.Mdb", "There.Mdb"}));
}

TEST_F(CompactTest, ADamagedSourceIs3343AndLeavesNothing)
{
    const std::string whole = bytes();
    std::string damaged = whole;
    for (std::size_t i = 4096 + 8; i < damaged.size(); i += 3)
        damaged[i] = static_cast<char>(i * 31);
    for (const std::string& content :
         {damaged, std::string("no database"), std::string(), whole.substr(0, 5000)}) {
        writeBytes(folder_ / "Test.Mdb", content);
        EXPECT_EQ(errorOfCompacting(), 3343) << content.size();
        EXPECT_EQ(files(), Names{"Test.Mdb"});
        EXPECT_EQ(bytes(), content);
    }
}

TEST_F(CompactTest, ASourceInUseInThisSessionIsCopiedAndPutAtRest)
{
    DBEngine::Session session;
    Database database = opened();
    addMail(database, u"2001", 1);
    database.Close();
    EXPECT_EQ(errorOfCompacting(), 0);
    EXPECT_EQ(files(), (Names{"New.Mdb", "Test.Mdb"}));
    database = DBEngine::OpenDatabase(path("New.Mdb"));
    EXPECT_EQ(rows(database, Statement{u"SELECT * FROM tblMail"}), 2);
}

TEST_F(CompactTest, LeftoversOfTheTargetsNameAreNotPlayedIn)
{
    writeBytes(folder_ / "New.Mdb-journal", "old");
    writeBytes(folder_ / "New.Mdb.Compact", "old");
    EXPECT_EQ(errorOfCompacting(), 0);
    EXPECT_EQ(files(), (Names{"New.Mdb", "Test.Mdb"}));
}

// Each changing operation fails in turn, until the work succeeds.
TEST_F(CompactTest, WhateverFailsNothingIsLeftAndItIsNever53)
{
    const std::string before = bytes();
    for (const auto failure :
         {std::errc::no_space_on_device, std::errc::no_such_file_or_directory}) {
        int failures = 0;
        for (int fatal = 1;; ++fatal, ++failures) {
            int count = 0;
            hooks::setFileProbe([&](FileOperation operation, const Path& at) {
                if (!isSparedFrom(operation) && ++count == fatal)
                    throw std::system_error(std::make_error_code(failure), at.string());
            });
            const int error = errorOfCompacting();
            hooks::setFileProbe({});
            ASSERT_EQ(bytes(), before);
            if (error == 0) break;
            EXPECT_TRUE(error == 57 || error == 61 || error == 75) << error;
            EXPECT_EQ(files(), Names{"Test.Mdb"}) << fatal;
        }
        EXPECT_GT(failures, 5);
        removeFile(folder_ / "New.Mdb");
    }
}

TEST_F(CompactTest, AKillAtAnyOperationLeavesTheSourceAndNoHalfTarget)
{
    const std::string before = bytes();
    int died = 0;
    for (int fatal = 1;; ++fatal, ++died) {
        const int code = inChild([&]() -> int {
            int count = 0;
            hooks::setFileProbe([&](FileOperation operation, const Path&) {
                if (operation != FileOperation::Read && ++count == fatal) _exit(7);
            });
            return errorOfCompacting() == 0 ? kGotThrough : 2;
        });
        ASSERT_EQ(bytes(), before);
        if (code == kGotThrough) break;
        ASSERT_EQ(code, 7);
        if (fileExists(folder_ / "New.Mdb")) {
            Database copy = DBEngine::OpenDatabase(path("New.Mdb"));
            EXPECT_EQ(rows(copy, Statement{u"SELECT * FROM tblMail"}), 1);
            copy.Close();
            removeFile(folder_ / "New.Mdb");
        }
    }
    EXPECT_GT(died, 5);
    EXPECT_EQ(files(), (Names{"New.Mdb", "Test.Mdb"}));
}

}
}
