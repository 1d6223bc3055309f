#include "platform/system/test_hooks.h"
#include "store/database_files.h"

#include "platform/runtime/paths.h"
#include "platform/runtime/runtime_error.h"
#include "platform/system/files.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

class DatabaseFilesTest : public ::testing::Test {
protected:
    void TearDown() override { hooks::setFileProbe({}); }
    Text in(TextView name) const { return joinPath(pathText(folder.path()), name); }
    static int numberOf(const std::function<void()>& work)
    {
        try {
            work();
        } catch (const RuntimeError& error) {
            return error.number();
        }
        return 0;
    }
    TempFolder folder;
};

TEST_F(DatabaseFilesTest, AMissingFileIs53)
{
    EXPECT_EQ(numberOf([&] { removeDatabase(in(u"a")); }), 53);
    EXPECT_EQ(numberOf([&] { renameDatabase(in(u"a"), in(u"b")); }), 53);
    EXPECT_EQ(numberOf([&] { replaceDatabase(in(u"a"), in(u"b")); }), 53);
    EXPECT_EQ(numberOf([&] { linkDatabase(in(u"a"), in(u"b")); }), 53);
}

TEST_F(DatabaseFilesTest, APresentTargetIs58)
{
    writeBytes(folder / "a", "a");
    writeBytes(folder / "b", "b");
    EXPECT_EQ(numberOf([&] { renameDatabase(in(u"a"), in(u"b")); }), 58);
    EXPECT_EQ(numberOf([&] { linkDatabase(in(u"a"), in(u"b")); }), 58);
    EXPECT_EQ(readBytes(folder / "b"), "b");
}

TEST_F(DatabaseFilesTest, AReplacementWithoutASourceLeavesTheTargetsJournal)
{
    writeBytes(folder / "b", "b");
    writeBytes(folder / "b-journal", "of b");
    EXPECT_EQ(numberOf([&] { replaceDatabase(in(u"a"), in(u"b")); }), 53);
    EXPECT_TRUE(fileExists(folder / "b-journal"));
}

TEST_F(DatabaseFilesTest, AJournalGoesWithItsFile)
{
    writeBytes(folder / "a", "a");
    writeBytes(folder / "a-journal", "of a");
    renameDatabase(in(u"a"), in(u"b"));
    EXPECT_EQ(readBytes(folder / "b-journal"), "of a");
    removeDatabase(in(u"b"));
    EXPECT_TRUE(fileNames(folder.path()).empty());
}

TEST_F(DatabaseFilesTest, AStrangersJournalDoesntWaitForTheNewFile)
{
    writeBytes(folder / "a", "a");
    writeBytes(folder / "b", "b");
    writeBytes(folder / "b-journal", "of the old b");
    replaceDatabase(in(u"a"), in(u"b"));
    EXPECT_EQ(readBytes(folder / "b"), "a");
    EXPECT_FALSE(fileExists(folder / "b-journal"));
}

TEST_F(DatabaseFilesTest, AFileSystemWithoutSecondNamesSaysSo)
{
    writeBytes(folder / "a", "a");
    EXPECT_TRUE(linkDatabase(in(u"a"), in(u"b")));
    hooks::setFileProbe([](FileOperation operation, const Path&) {
        if (operation == FileOperation::Link)
            throw std::system_error(std::make_error_code(std::errc::operation_not_supported));
    });
    EXPECT_FALSE(linkDatabase(in(u"a"), in(u"c")));
}

}
}
