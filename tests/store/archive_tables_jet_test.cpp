#include "store/archive_tables.h"

#include "platform/dao/connection.h"
#include "store/database_files.h"
#include "support/archive_fixture.h"
#include "support/jet_reader.h"
#include "support/test_data.h"

#include <map>

namespace tolvek::test {
namespace {

class ArchiveTablesJetTest : public ArchiveFixture {
protected:
    void TearDown() override
    {
        DBEngine::Abandon();
        ArchiveFixture::TearDown();
    }
    // Puts a database of the classic platform in place as Old.Mdb.
    void given(const std::string& name)
    {
        std::filesystem::copy_file(Path(TOLVEK_TEST_DATA) / "jet" / (name + ".mdb"),
                                   file("Old.Mdb"),
                                   std::filesystem::copy_options::overwrite_existing);
    }
    static Text at(TextView name) { return joinPath(appPath(), name); }

    using Schema = std::map<Text, Text>; // the statement by the name of its object
    static Schema schemaOf(const Path& path)
    {
        const auto connection = Connection::open(path);
        const auto query = connection->query(
            u"SELECT type || ' ' || name || ' of ' || tbl_name, sql FROM sqlite_master");
        Schema schema;
        while (query->step())
            schema[query->text(0)] = query->text(1);
        return schema;
    }

    JetReader reader;
};

TEST_F(ArchiveTablesJetTest, AConvertedArchiveIsMadeAsACreatedOne)
{
    for (const std::string name : {"current_jet4", "empty_current_jet4"}) {
        given(name);
        DBEngine::CompactDatabase(at(u"Old.Mdb"), at(u"New.Mdb"));
        EXPECT_EQ(schemaOf(file("New.Mdb")), schemaOf(file("Tolvek.Mdb")));
        removeDatabase(at(u"New.Mdb"));
    }
}

TEST_F(ArchiveTablesJetTest, AConvertedArchiveTakesMailAndRefusesAStoredOne)
{
    given("current_jet4");
    removeDatabase(gDbPath);
    DBEngine::CompactDatabase(at(u"Old.Mdb"), gDbPath);
    EXPECT_EQ(rows(u"tblTolvek"), 56);
    store(mail(u"new@example.jp", u"taro@example.jp"));
    EXPECT_EQ(rows(u"tblTolvek"), 57);
    EXPECT_THROW(store(mail(u"new@example.jp", u"taro@example.jp")), RuntimeError);
}

// The upgrade adds the keys; until then every row must be accepted.
TEST_F(ArchiveTablesJetTest, TablesOfAnOlderSchemaComeAsTheyAre)
{
    given("v210_jet4");
    DBEngine::CompactDatabase(at(u"Old.Mdb"), at(u"New.Mdb"));
    const Schema converted = schemaOf(file("New.Mdb")), created = schemaOf(file("Tolvek.Mdb"));
    for (const Text name :
         {u"table tblTolvek of tblTolvek", u"table tblFilterData of tblFilterData"})
        EXPECT_EQ(converted.at(name).find(u"PRIMARY KEY"), Text::npos) << toUtf8(name);
    for (const Text name : {u"table tblFriend of tblFriend", u"table tblFilter of tblFilter"})
        EXPECT_EQ(converted.at(name), created.at(name)) << toUtf8(name);
}

TEST_F(ArchiveTablesJetTest, AnArchiveOfTheHomePlatformIsMovedAndRemovedAsAnyFile)
{
    given("current_jet4");
    Database database = DBEngine::OpenDatabase(at(u"Old.Mdb"));
    database.Close();
    EXPECT_TRUE(databaseExists(at(u"Old.Mdb")));
    renameDatabase(at(u"Old.Mdb"), at(u"Moved.Mdb"));
    EXPECT_FALSE(databaseExists(at(u"Old.Mdb")));
    EXPECT_EQ(readBytes(file("Moved.Mdb")),
              readBytes(Path(TOLVEK_TEST_DATA) / "jet" / "current_jet4.mdb"));
    EXPECT_EQ(rows(u"tblTolvek", at(u"Moved.Mdb")), 56);
    removeDatabase(at(u"Moved.Mdb"));
    EXPECT_FALSE(databaseExists(at(u"Moved.Mdb")));
}

}
}
