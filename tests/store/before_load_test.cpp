#include "app/file_names.h"
#include "store/before_load.h"

#include "store/database_files.h"
#include "support/archive_fixture.h"
#include "support/fault_injection.h"

namespace tolvek::test {
namespace {

using Texts = std::vector<Text>;

class BeforeLoadTest : public ArchiveFixture {
protected:
    static Text copy(TextView number = u"")
    {
        return sideFile(gDbPath, kBeforeLoadSuffix) + Text(number);
    }
    static Texts subjects(const Text& database)
    {
        return column(Statement{u"SELECT tblTolvek_Subject FROM tblTolvek"}, 0, database);
    }
    static void storeMail(const Text& subject, const Text& database = gDbPath)
    {
        const TextView time = subject == u"一" ? u"101110" : u"101111";
        store(mail(u"a@b.jp", u"c@d.jp", subject, u"20000215", time), database);
    }
    // The engine's operations on its journals have tests of their own.
    static bool isNoJournal(const Path& path)
    {
        return path.filename().string().find("-") == std::string::npos;
    }
    static void clear() { execute(Statement{u"DELETE FROM tblTolvek"}); }
    std::size_t filesLike(const std::string& part) const
    {
        std::size_t found = 0;
        for (const std::string& name : fileNames(folder.path()))
            found += name.find(part) != std::string::npos ? 1 : 0;
        return found;
    }
};

TEST_F(BeforeLoadTest, ACleanImportsCopyIsReplacedByTheNext)
{
    storeMail(u"一");
    endLoad(beginLoad(gDbPath), false);
    storeMail(u"二");
    EXPECT_EQ(beginLoad(gDbPath), copy());
    endLoad(copy(), false);
    EXPECT_EQ(subjects(copy()), (Texts{u"一", u"二"}));
    EXPECT_EQ(filesLike(".BeforeLoad"), 1u) << "no mark, no number";
}

TEST_F(BeforeLoadTest, TheCopyIsOpenToThoseToWhomTheArchiveIs)
{
    using std::filesystem::perms;
    for (const perms mode : {perms::owner_read | perms::owner_write | perms::group_read,
                             perms::owner_read | perms::owner_write}) {
        std::filesystem::permissions(file("Tolvek.Mdb"), mode);
        endLoad(beginLoad(gDbPath), false);
        EXPECT_EQ(std::filesystem::status(file("Tolvek.Mdb.BeforeLoad")).permissions(), mode);
    }
}

TEST_F(BeforeLoadTest, TheCopyOfAnImportWithErrorsStaysAndTheNextIsNumbered)
{
    storeMail(u"一");
    endLoad(beginLoad(gDbPath), true);
    clear();
    storeMail(u"二");
    for (const TextView number : {u"2", u"3"}) {
        EXPECT_EQ(beginLoad(gDbPath), copy(number));
        endLoad(copy(number), number == u"2");
    }
    EXPECT_EQ(subjects(copy()), Texts{u"一"});
    EXPECT_EQ(subjects(copy(u"2")), Texts{u"二"});
}

TEST_F(BeforeLoadTest, ACopyThatWasDeletedIsNoLongerProtected)
{
    endLoad(beginLoad(gDbPath), true);
    removeDatabase(copy());
    EXPECT_EQ(beginLoad(gDbPath), copy());
    endLoad(copy(), false);
    EXPECT_EQ(beginLoad(gDbPath), copy());
}

// Loading the empty file of an empty table twice ends without an error each time.
TEST_F(BeforeLoadTest, TheOnlyCopyOfAMailIsNeverGivenUp)
{
    storeMail(u"一");
    endLoad(beginLoad(gDbPath), false);
    clear();
    EXPECT_EQ(beginLoad(gDbPath), copy());
    endLoad(copy(), false);
    EXPECT_EQ(subjects(copy()), Texts{});
    EXPECT_EQ(subjects(copy(u"2")), Texts{u"一"});
}

TEST_F(BeforeLoadTest, AnImportThatWasCutOffIsTakenBack)
{
    storeMail(u"一");
    storeMail(u"二");
    beginLoad(gDbPath);
    clear();
    storeMail(u"一");
    undoCutOffLoads(appPath());
    EXPECT_EQ(subjects(gDbPath), (Texts{u"一", u"二"}));
    EXPECT_EQ(filesLike("Tolvek.Mdb"), 1u);
}

TEST_F(BeforeLoadTest, AnImportThatEndedIsLeftAsItIs)
{
    for (const bool withErrors : {false, true}) {
        storeMail(u"一");
        endLoad(beginLoad(gDbPath), withErrors);
        clear();
        undoCutOffLoads(appPath());
        EXPECT_EQ(subjects(gDbPath), Texts{});
    }
}

TEST_F(BeforeLoadTest, AMailOfAHalfLoadedArchiveAloneIsKeptBesideIt)
{
    storeMail(u"一");
    beginLoad(gDbPath);
    clear();
    storeMail(u"二");
    undoCutOffLoads(appPath());
    EXPECT_EQ(subjects(gDbPath), Texts{u"一"});
    EXPECT_EQ(subjects(gDbPath + u".HalfLoaded"), Texts{u"二"});
}

TEST_F(BeforeLoadTest, TakingAnImportBackMayBeCutOffAnywhereToo)
{
    storeMail(u"一");
    beginLoad(gDbPath);
    clear();
    storeMail(u"二");
    KeptFolder kept(folder.path());
    kept.keep();
    endAtEachOperation([] { undoCutOffLoads(appPath()); },
                       [&](int operation) {
                           undoCutOffLoads(appPath());
                           EXPECT_EQ(subjects(gDbPath), Texts{u"一"}) << operation;
                           EXPECT_EQ(subjects(gDbPath + u".HalfLoaded"), Texts{u"二"}) << operation;
                           kept.putBack();
                       },
                       {}, isNoJournal);
}

TEST_F(BeforeLoadTest, ABackUpThatWasOnDisplayIsTakenBackToo)
{
    const Text backUp = joinPath(appPath(), u"Tolvek_20000225.Mdb");
    storeMail(u"一");
    DBEngine::CompactDatabase(gDbPath, backUp);
    beginLoad(backUp);
    execute(Statement{u"DELETE FROM tblTolvek"}, backUp);
    undoCutOffLoads(appPath());
    EXPECT_EQ(subjects(backUp), Texts{u"一"});
    EXPECT_EQ(subjects(gDbPath), Texts{u"一"});
}

TEST_F(BeforeLoadTest, ACopyThatCantBeReadAnyMoreTakesNoOnesPlace)
{
    storeMail(u"一");
    beginLoad(gDbPath);
    writeBytes(file("Tolvek.Mdb.BeforeLoad"), std::string(4096, 'x'));
    undoCutOffLoads(appPath());
    undoCutOffLoads(appPath());
    EXPECT_EQ(subjects(gDbPath), Texts{u"一"});
    EXPECT_TRUE(exists("Tolvek.Mdb.BeforeLoad"));
    EXPECT_FALSE(exists("Tolvek.Mdb.BeforeLoad.Running"));
}

// The end of the import failed, and the program went on.
TEST_F(BeforeLoadTest, ASecondImportOfOneRunLeavesOneMark)
{
    storeMail(u"一");
    beginLoad(gDbPath);
    clear();
    EXPECT_EQ(beginLoad(gDbPath), copy(u"2"));
    EXPECT_EQ(filesLike(".Running"), 1u);
    endLoad(copy(u"2"), false);
    EXPECT_EQ(subjects(copy()), Texts{u"一"});
}

TEST_F(BeforeLoadTest, WithoutADatabaseThereIsNothingToKeep)
{
    removeDatabase(gDbPath);
    EXPECT_EQ(beginLoad(gDbPath), u"");
    EXPECT_EQ(filesLike(".BeforeLoad"), 0u);
}

}
}
