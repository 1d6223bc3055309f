#include "letters/archives.h"

#include "support/temp_folder.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

using Lines = std::vector<std::string>;

Lines namesOf(const std::vector<ArchiveFile>& files)
{
    Lines names;
    for (const ArchiveFile& file : files)
        names.push_back(toUtf8(file.name()));
    return names;
}

class ArchivesTest : public testing::Test {
protected:
    void given(std::initializer_list<const char*> names) const
    {
        for (const char* name : names)
            writeBytes(folder / name, "x");
    }
    TempFolder folder;
};

TEST_F(ArchivesTest, ComeInTheOrderOfTheirPrecedence)
{
    given({"Tolvek.Mdb.Jet2", "Tolvek_20010101.Mdb", "Tolvek.Mdb.V300", "Tolvek.Mdb",
           "Tolvek_20030101.Mdb", "old.mdb", "Tolvek.Mdb.Jet"});
    EXPECT_EQ(namesOf(archivesIn(folder.path())),
              (Lines{"Tolvek.Mdb", "old.mdb", "Tolvek_20030101.Mdb", "Tolvek_20010101.Mdb",
                     "Tolvek.Mdb.V300", "Tolvek.Mdb.Jet", "Tolvek.Mdb.Jet2"}));
}

TEST_F(ArchivesTest, CopiesAreAskedForSeparately)
{
    given({"Tolvek.Mdb", "Tolvek.Mdb.Bak", "Tolvek.Mdb.Kept2", "Tolvek.Mdb.BeforeLoad",
           "Tolvek.Mdb.HalfLoaded"});
    EXPECT_EQ(namesOf(archivesIn(folder.path())), Lines{"Tolvek.Mdb"});
    EXPECT_EQ(namesOf(copiesIn(folder.path())),
              (Lines{"Tolvek.Mdb.Bak", "Tolvek.Mdb.BeforeLoad", "Tolvek.Mdb.HalfLoaded",
                     "Tolvek.Mdb.Kept2"}));
}

TEST_F(ArchivesTest, MarksAndUnfinishedFilesAreNone)
{
    given({"Tolvek.Mdb-wal", "Tolvek.Mdb.Upgrade", "Tolvek.Mdb.New", "Tolvek.Mdb.Create",
           "Tolvek.Mdb.BeforeLoad.Running", "Tolvek.Mdb.Damaged", "Tolvek_20010101.Mdb.Compact",
           "Tolvek.ini", "Tolvek.lock"});
    EXPECT_EQ(namesOf(archivesIn(folder.path())), Lines{});
    EXPECT_EQ(namesOf(copiesIn(folder.path())), Lines{});
}

TEST_F(ArchivesTest, AFileAsChosenOrAllOfAChosenFolder)
{
    given({"Tolvek.Mdb", "letters.bin"});
    EXPECT_EQ(namesOf(archivesAt(folder / "letters.bin")), Lines{"letters.bin"});
    EXPECT_EQ(namesOf(archivesAt(folder.path())), Lines{"Tolvek.Mdb"});
}

}
}
