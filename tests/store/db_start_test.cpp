#include "store/db_start.h"

#include "store/database_files.h"
#include "support/archive_fixture.h"

namespace tolvek::test {
namespace {

class DbStartTest : public ArchiveFixture {
protected:
    // Renames the archive, so that a new one can be created in its place.
    void moveAside(TextView suffix) { renameDatabase(gDbPath, gDbPath + Text(suffix)); }
};

TEST_F(DbStartTest, AWholeNewIsPutInPlaceWhenThereIsNoDatabase)
{
    store(Mail{});
    moveAside(u".New");
    restoreFromNew(gDbPath);
    EXPECT_EQ(rows(u"tblTolvek"), 1);
    EXPECT_EQ(fileNames(folder.path()), std::vector<std::string>{"Tolvek.Mdb"});
}

TEST_F(DbStartTest, ANewBesideADatabaseIsLeftAlone)
{
    writeBytes(file("Tolvek.Mdb.New"), "x");
    restoreFromNew(gDbPath);
    EXPECT_EQ(readBytes(file("Tolvek.Mdb.New")), "x");
    EXPECT_EQ(rows(u"tblTolvek"), 0);
}

TEST_F(DbStartTest, LessThanAWholeNewIsNoDatabase)
{
    store(Mail{});
    moveAside(u".New");
    const std::string whole = readBytes(file("Tolvek.Mdb.New"));
    for (const std::string& broken :
         {std::string(), std::string("no database"), whole.substr(0, whole.size() / 2)}) {
        writeBytes(file("Tolvek.Mdb.New"), broken);
        restoreFromNew(gDbPath);
        EXPECT_FALSE(databaseExists(gDbPath)) << broken.size();
        EXPECT_EQ(readBytes(file("Tolvek.Mdb.New")), broken);
    }
}

TEST_F(DbStartTest, ABakAloneIsNoReasonToPutAnythingInPlace)
{
    moveAside(u".Bak");
    restoreFromNew(gDbPath);
    EXPECT_FALSE(databaseExists(gDbPath));
}

TEST_F(DbStartTest, ABakWithMailIsKeptAside)
{
    store(Mail{});
    moveAside(u".Bak");
    keepBackUpAside(gDbPath);
    EXPECT_FALSE(exists("Tolvek.Mdb.Bak"));
    EXPECT_EQ(rows(u"tblTolvek", gDbPath + u".Kept"), 1);
}

TEST_F(DbStartTest, WhatWasKeptBeforeIsNeverOverwritten)
{
    store(Mail{});
    moveAside(u".Bak");
    writeBytes(file("Tolvek.Mdb.Kept"), "first");
    writeBytes(file("Tolvek.Mdb.Kept2"), "second");
    keepBackUpAside(gDbPath);
    EXPECT_EQ(readBytes(file("Tolvek.Mdb.Kept")), "first");
    EXPECT_EQ(readBytes(file("Tolvek.Mdb.Kept2")), "second");
    EXPECT_EQ(rows(u"tblTolvek", gDbPath + u".Kept3"), 1);
}

TEST_F(DbStartTest, ABakThatCantBeReadMayHoldMail)
{
    writeBytes(file("Tolvek.Mdb.Bak"), "some older format");
    keepBackUpAside(gDbPath);
    EXPECT_EQ(readBytes(file("Tolvek.Mdb.Kept")), "some older format");
}

TEST_F(DbStartTest, AnEmptyBakIsLeftToTheCompaction)
{
    moveAside(u".Bak");
    keepBackUpAside(gDbPath);
    EXPECT_TRUE(exists("Tolvek.Mdb.Bak"));
    EXPECT_FALSE(exists("Tolvek.Mdb.Kept"));
}

TEST_F(DbStartTest, WhatWasBeingWrittenWhenARunWasCutOffGoes)
{
    const std::vector<std::string> sides{
        "Tolvek.Mdb.New.Compact",     "Tolvek.Mdb.Repair",
        "Tolvek.Mdb.Repair.Compact",  "Tolvek.Mdb.Whole",
        "Tolvek.Mdb.Create",          "Tolvek.Mdb.BeforeLoad.New",
        "Tolvek.Mdb.Jet.side",        "Tolvek.Mdb.BeforeLoad.New.Compact",
        "Tolvek.Mdb.Whole.Compact",   "Tolvek_20000225.Mdb.Compact",
        "Tolvek_20231231.Mdb.Compact"};
    for (const std::string& name : sides)
        writeBytes(file(name), "half");
    writeBytes(file("Tolvek.Mdb.Create-journal"), "half");
    removeUnfinished(gDbPath);
    EXPECT_EQ(fileNames(folder.path()), std::vector<std::string>{"Tolvek.Mdb"});
}

TEST_F(DbStartTest, WholeFilesAndThoseOfOthersStay)
{
    const std::vector<std::string> others{"Tolvek.Mdb.New",          "Tolvek.Mdb.Bak",
                                          "Tolvek.Mdb.Jet",          "Tolvek.Mdb.Kept",
                                          "Tolvek.Mdb.V300",         "Tolvek.Mdb.Upgrade",
                                          "Tolvek.Mdb.BeforeLoad",   "Tolvek_20000225.Mdb",
                                          "Tolvek_mine.Mdb.Compact", "Tolvek_2000022.Mdb.Compact",
                                          "old.Mdb.Compact"};
    for (const std::string& name : others)
        writeBytes(file(name), name);
    removeUnfinished(gDbPath);
    for (const std::string& name : others)
        EXPECT_EQ(readBytes(file(name)), name);
}

}
}
