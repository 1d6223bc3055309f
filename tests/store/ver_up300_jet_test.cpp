// The upgrade of archives that the classic platform left.
#include "platform/dao/connection.h"
#include "platform/runtime/test_hooks.h"
#include "support/jet_reader.h"
#include "support/jet_tables.h"
#include "support/test_data.h"
#include "support/upgrade_fixture.h"

namespace tolvek::test {
namespace {

class VerUp300JetTest : public UpgradeFixture {
protected:
    void SetUp() override
    {
        UpgradeFixture::SetUp();
        removeDatabase(gDbPath);
        givenVersion("210");
        hooks::setMsgBox([this](const MsgBoxRequest& box) {
            reported.push_back(box.text);
            return MsgAnswer::Ok;
        });
    }
    void TearDown() override
    {
        DBEngine::Abandon();
        UpgradeFixture::TearDown();
    }
    void given(const std::string& name)
    {
        std::filesystem::copy_file(Path(TOLVEK_TEST_DATA) / "jet" / (name + ".mdb"),
                                   file("Tolvek.Mdb"));
    }
    // The fields of the old schema; the new ones must have their default values.
    static JetTables oldTablesOf(const Path& path)
    {
        JetTables tables = tablesOf(*Connection::open(path));
        for (auto& [name, rows] : tables) {
            JetRows old;
            for (std::vector<std::string> row : rows) {
                std::erase(row, "tblTolvek_SubKey=0");
                std::erase(row, "tblTolvek_Include='0'");
                std::erase(row, "tblFilterDt_SubKey=0");
                old.insert(row);
            }
            rows = old;
        }
        return tables;
    }
    void expectWayBack(const std::string& name, TextView number)
    {
        given(name);
        for (int start = 0; start < 2; ++start) {
            reported.clear();
            EXPECT_THROW(runUpgrade(), ProgramEnd);
            ASSERT_EQ(reported.size(), 3u);
            EXPECT_EQ(reported[1].substr(0, 12), u"エラー番号： " + Text(number) + u"\r");
            EXPECT_EQ(reported[2], kUpgradeFailed);
            EXPECT_EQ(tablesOf(*Connection::open(file("Tolvek.Mdb"))), expectedTables(name));
            EXPECT_EQ(version(), u"210");
            EXPECT_FALSE(exists("Tolvek.Mdb.V300"));
            EXPECT_FALSE(exists("Tolvek.Mdb.Upgrade"));
        }
    }

    JetReader reader;
    std::vector<Text> reported;
};

TEST_F(VerUp300JetTest, EveryFieldOfEveryRowIsCarriedOver)
{
    given("v210_jet4");
    runUpgrade();
    EXPECT_EQ(reported, std::vector<Text>{Text(kUpgradeBegins)});
    EXPECT_TRUE(isUpgraded(gDbPath));
    EXPECT_EQ(oldTablesOf(file("Tolvek.Mdb")), expectedTables("v210_jet4"));
    EXPECT_EQ(tablesOf(*Connection::open(file("Tolvek.Mdb.V300"))), expectedTables("v210_jet4"));
    EXPECT_EQ(version(), u"331");
    EXPECT_EQ(readBytes(file("Tolvek.Mdb.Jet")),
              readBytes(Path(TOLVEK_TEST_DATA) / "jet" / "v210_jet4.mdb"));
}

TEST_F(VerUp300JetTest, AnUpgradedArchiveTakesMailAndRefusesAStoredOne)
{
    given("v210_jet4");
    runUpgrade();
    store(mail(u"new@example.jp", u"taro@example.jp"));
    EXPECT_THROW(store(mail(u"new@example.jp", u"taro@example.jp")), RuntimeError);
}

TEST_F(VerUp300JetTest, AnApostropheGoesBackAtEveryStart)
{
    expectWayBack("v210_apostrophe_jet4", u"3075");
}

TEST_F(VerUp300JetTest, TwinsGoBackAtEveryStart)
{
    expectWayBack("v210_twins_jet4", u"3022");
}

// An upgrade that was cut off on the classic platform, which set no mark.
TEST_F(VerUp300JetTest, AnArchiveThatTheHomePlatformHadAlreadyMovedIsUpgradedToo)
{
    given("v210_jet4");
    renameDatabase(gDbPath, old());
    settleCutOffUpgrade(gDbPath, true);
    runUpgrade();
    EXPECT_EQ(oldTablesOf(file("Tolvek.Mdb")), expectedTables("v210_jet4"));
}

}
}
