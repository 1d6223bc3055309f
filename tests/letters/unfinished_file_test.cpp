#include "letters/unfinished_file.h"

#include "platform/system/files.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

TEST(UnfinishedFileTest, IsBesideItsTargetUntilItIsFinished)
{
    const TempFolder folder;
    writeBytes(folder / "out.txt", "old");
    UnfinishedFile file(folder / "out.txt");
    writeBytes(file.path(), "new");
    EXPECT_EQ(readBytes(folder / "out.txt"), "old");
    file.finish();
    EXPECT_EQ(readBytes(folder / "out.txt"), "new");
    EXPECT_EQ(fileNames(folder.path()).size(), 1u);
}

TEST(UnfinishedFileTest, LeavesNothingIfItIsGivenUp)
{
    const TempFolder folder;
    {
        const UnfinishedFile file(folder / "out.txt");
        writeBytes(file.path(), "half");
    }
    {
        const UnfinishedFile half(folder / "out");
        std::filesystem::create_directory(half.path());
        writeBytes(half.path() / "1.eml", "half");
    }
    EXPECT_TRUE(entryNames(folder.path()).empty());
}

TEST(UnfinishedFileTest, TakesNoNameThatIsInUse)
{
    const TempFolder folder;
    writeBytes(folder / "out.txt.part", "somebody's");
    {
        const UnfinishedFile file(folder / "out.txt");
        writeBytes(file.path(), "half");
    }
    EXPECT_EQ(readBytes(folder / "out.txt.part"), "somebody's");
}

TEST(UnfinishedFileTest, AFolderTakesOnlyAFreeName)
{
    const TempFolder folder;
    std::filesystem::create_directory(folder / "out");
    UnfinishedFile file(folder / "out");
    std::filesystem::create_directory(file.path());
    EXPECT_THROW(file.finishFolder(), std::system_error);
    std::filesystem::remove(folder / "out");
    file.finishFolder();
    EXPECT_TRUE(folderExists(folder / "out"));
}

}
}
