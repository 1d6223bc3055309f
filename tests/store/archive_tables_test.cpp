// Which files are opened as an archive, and what happens to other files in its place.
#include "platform/runtime/test_hooks.h"
#include "store/archive_tables.h"

#include "platform/dao/connection.h"
#include "store/database_files.h"
#include "store/db_compress.h"
#include "support/errors.h"
#include "support/jet_reader.h"
#include "support/jet_tables.h"
#include "support/report_list.h"
#include "support/upgrade_fixture.h"

namespace tolvek::test {
namespace {

class ArchiveTablesTest : public UpgradeFixture {
protected:
    void TearDown() override
    {
        DBEngine::Abandon();
        UpgradeFixture::TearDown();
    }
    // As another program would do it, without our checks.
    void change(TextView sql)
    {
        DBEngine::Rest();
        Connection::open(file("Tolvek.Mdb"))->pragma(sql);
    }
    static int errorOfOpening()
    {
        return errorOf([] { DBEngine::OpenDatabase(gDbPath).Close(); });
    }
    static int errorOfCompacting()
    {
        const Text copy = gDbPath + u".Copy";
        const int error = errorOf([&] { DBEngine::CompactDatabase(gDbPath, copy); });
        if (databaseExists(copy)) removeDatabase(copy);
        return error;
    }
    void givenGenerations()
    {
        store(mail(u"a@b.jp", u"c@d.jp", u"一通目"));
        dbCompress(gDbPath);
    }
};

TEST_F(ArchiveTablesTest, AnArchiveOfTodayAndOneOfAnOlderVersionAreOpened)
{
    EXPECT_EQ(errorOfOpening(), 0);
    EXPECT_FALSE(isOldArchive(gDbPath));
    givenOldArchive();
    EXPECT_EQ(errorOfOpening(), 0);
    EXPECT_EQ(errorOfCompacting(), 0);
    EXPECT_TRUE(isOldArchive(gDbPath));
}

TEST_F(ArchiveTablesTest, OneThatCameFromAJetFileIsOpenedWithWhateverElseWasInIt)
{
    JetReader reader;
    for (const char* name : {"current_jet4", "v210_jet4"}) {
        removeDatabase(gDbPath);
        DBEngine::CompactDatabase(pathText(Path(TOLVEK_TEST_DATA) / "jet" / name) + u".mdb",
                                  gDbPath);
        EXPECT_EQ(errorOfOpening(), 0) << name;
        change(u"CREATE TABLE \"Notes\" (\n  \"Note\" LONGTEXT COLLATE GENERAL\n)");
        EXPECT_EQ(errorOfOpening(), 0) << name;
    }
}

TEST_F(ArchiveTablesTest, StatisticsOfTheEngineAreNobodyElses)
{
    store(Mail{});
    change(u"ANALYZE");
    EXPECT_EQ(errorOfOpening(), 0);
    EXPECT_EQ(errorOfCompacting(), 0);
}

struct Change {
    const char* name;
    TextView sql;
    int compacting; // the error of compacting; that of opening is always 3343
};

class ArchiveTablesChangedTest : public ArchiveTablesTest,
                                 public ::testing::WithParamInterface<Change> {};

TEST_P(ArchiveTablesChangedTest, AreNotOpened)
{
    change(GetParam().sql);
    EXPECT_EQ(errorOfOpening(), 3343);
    EXPECT_EQ(errorOfCompacting(), GetParam().compacting);
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, ArchiveTablesChangedTest,
    ::testing::Values(
        Change{"Trigger",
               u"CREATE TRIGGER t AFTER INSERT ON tblFriend BEGIN DELETE FROM tblTolvek; END",
               3041},
        Change{"TriggerWithOneOfOurNames",
               u"CREATE TRIGGER \"tblTolvek_Subject added\" AFTER INSERT ON tblTolvek BEGIN "
               u"DELETE FROM tblTolvek; END",
               3041},
        Change{"View", u"CREATE VIEW v AS SELECT * FROM tblTolvek", 3041},
        Change{"IndexOnAnExpression", u"CREATE INDEX i ON tblTolvek(length(tblTolvek_Mail1))",
               3041},
        Change{"PartialIndex",
               u"CREATE INDEX i ON tblTolvek(tblTolvek_YMD) WHERE tblTolvek_SubKey = 0", 3041},
        Change{"AnotherColumn", u"ALTER TABLE tblFriend ADD COLUMN More TEXT", 3343},
        Change{"TableThatComputes", u"CREATE TABLE Notes (Note TEXT CHECK (length(Note) > 0))",
               3343},
        Change{"MissingTable", u"DROP TABLE tblFilter", 3343}),
    [](const auto& change) { return std::string(change.param.name); });

class ArchiveTablesStrangerTest : public ArchiveTablesTest {
protected:
    void givenStranger()
    {
        removeDatabase(gDbPath);
        Connection::create(file("Tolvek.Mdb"))->close();
        change(u"PRAGMA application_id = 0");
        change(u"CREATE TABLE other (a)");
    }
};

TEST_F(ArchiveTablesStrangerTest, InPlaceOfTheArchiveItStaysAndSoDoesTheBak)
{
    givenGenerations();
    const std::string bak = readBytes(file("Tolvek.Mdb.Bak"));
    givenStranger();
    const std::string stranger = readBytes(file("Tolvek.Mdb"));
    ReportList reports;
    reports.listen();
    for (int start = 0; start < 2; ++start)
        dbCompress(gDbPath);
    EXPECT_EQ(reports.take(), (Reports{"dbCompress 3041", "dbCompress 3041"}));
    EXPECT_EQ(readBytes(file("Tolvek.Mdb")), stranger);
    EXPECT_EQ(readBytes(file("Tolvek.Mdb.Bak")), bak);
    EXPECT_EQ(fileNames(folder.path()).size(), 2u);
}

TEST_F(ArchiveTablesStrangerTest, ATriggerOfAStrangerNeverRuns)
{
    givenGenerations();
    change(u"CREATE TRIGGER t AFTER UPDATE ON tblTolvek BEGIN DELETE FROM tblTolvek; END");
    EXPECT_EQ(errorOf([] { execute(Statement{u"UPDATE tblTolvek SET tblTolvek_SndName = 'x'"}); }),
              3343);
    change(u"DROP TRIGGER t");
    EXPECT_EQ(rows(u"tblTolvek"), 1);
}

TEST_F(ArchiveTablesStrangerTest, AsTheBakItIsKeptAsideByARepair)
{
    givenStranger();
    renameDatabase(gDbPath, gDbPath + u".Bak");
    const std::string stranger = readBytes(file("Tolvek.Mdb.Bak"));
    writeBytes(file("Tolvek.Mdb"), "ruined");
    hooks::setMsgBox([](const MsgBoxRequest& box) {
        return box.buttons == MsgButtons::YesNo ? MsgAnswer::Yes : MsgAnswer::Ok;
    });
    dbCompress(gDbPath);
    EXPECT_EQ(readBytes(file("Tolvek.Mdb.Damaged")), "ruined");
    EXPECT_EQ(readBytes(file("Tolvek.Mdb.Damaged2")), stranger);
}

}
}
