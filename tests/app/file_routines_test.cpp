#include "app/file_routines.h"
#include "platform/runtime/paths.h"
#include "platform/system/process.h"
#include "platform/system/test_hooks.h"
#include "support/msg_box_script.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

class FileRoutinesTest : public ::testing::Test {
protected:
    void TearDown() override { hooks::setWindowsFolder({}); }
    Text in(TextView name) const { return joinPath(pathText(folder.path()), name); }
    std::vector<Text> listed(TextView extension, std::int32_t limit)
    {
        std::vector<Text> list{u"left over"};
        FileNameGet(pathText(folder.path()), Text(extension), limit, list, count);
        return list;
    }

    TempFolder folder;
    MsgBoxScript boxes;
    std::int32_t count = -1;
};

TEST_F(FileRoutinesTest, AFileIsThereOrNot)
{
    writeBytes(folder / "Tolvek.Mdb", "x");
    std::filesystem::create_directory(folder / "Folder.Mdb");
    EXPECT_EQ(FileNameCheck(in(u"Tolvek.Mdb")), -1);
    EXPECT_EQ(FileNameCheck(in(u"TOLVEK.MDB")), -1);
    EXPECT_EQ(FileNameCheck(in(u"Other.Mdb")), 0);
    EXPECT_EQ(FileNameCheck(in(u"Folder.Mdb")), 0);
    EXPECT_EQ(FileNameCheck(u""), 0);
}

TEST_F(FileRoutinesTest, NamesComeInDescendingOrder)
{
    for (const char* name : {"b.Mdb", "a.mdb", "c.MDB", "d.txt"})
        writeBytes(folder / name, "");
    EXPECT_EQ(listed(u"Mdb", 999), (std::vector<Text>{u"c.MDB", u"b.Mdb", u"a.mdb"}));
    EXPECT_EQ(count, 3);
}

TEST_F(FileRoutinesTest, TheListingStopsOnceTheCountIsPastTheLimit)
{
    for (const char* name : {"a.x", "b.x", "c.x", "d.x"})
        writeBytes(folder / name, "");
    EXPECT_EQ(listed(u"x", 1).size(), 2u);
    EXPECT_EQ(count, 2);
}

TEST_F(FileRoutinesTest, NothingFoundIsACountOfZero)
{
    EXPECT_TRUE(listed(u"Mdb", 999).empty());
    EXPECT_EQ(count, 0);
}

TEST_F(FileRoutinesTest, TheWindowsFolderIsWhatTheSystemSays)
{
    EXPECT_EQ(GetWinDir(), pathText(windowsFolder()));
    hooks::setWindowsFolder(folder.path());
    EXPECT_EQ(GetWinDir(), pathText(folder.path()));
}

TEST_F(FileRoutinesTest, ACopyAnswersAndNeverThrows)
{
    writeBytes(folder / "a", "new");
    writeBytes(folder / "b", "old");
    EXPECT_EQ(CopyFileA(in(u"a"), in(u"b"), 1), 0);
    EXPECT_EQ(readBytes(folder / "b"), "old");
    EXPECT_NE(CopyFileA(in(u"a"), in(u"b"), 0), 0);
    EXPECT_EQ(readBytes(folder / "b"), "new");
    EXPECT_EQ(CopyFileA(in(u"missing"), in(u"c"), 0), 0);
}

}
}
