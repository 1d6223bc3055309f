// docs/rescue.sql, the views for reading the mails without the program: run by the plain
// engine, which doesn't know the archive's collation.
#include "support/archive_fixture.h"
#include "support/test_data.h"

#include <sqlite3.h>

#include <fstream>
#include <sstream>

namespace tolvek::test {
namespace {

class RescueSqlTest : public ArchiveFixture {
protected:
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        store(mail(u"b@x.jp", u"taro@example.jp", u"二", u"20000216"));
        store(mail(u"a@x.jp", u"taro@example.jp", u"一", u"20000215"));
        store(mail(u"B@x.jp", u"taro@example.jp", u"三", u"20000217"));
        addFriend(u"a@x.jp", u"花子", u"もも");
        addFilter(10, 1, 0, u"題", u"一");
        const std::string path = file("Tolvek.Mdb").string();
        ASSERT_EQ(sqlite3_open_v2(path.c_str(), &plain_, SQLITE_OPEN_READONLY, nullptr), SQLITE_OK);
    }
    void TearDown() override
    {
        sqlite3_close(plain_);
        ArchiveFixture::TearDown();
    }

    void addViews()
    {
        std::ostringstream script;
        script << std::ifstream(TOLVEK_CHECKOUT "/docs/rescue.sql").rdbuf();
        EXPECT_EQ(run(script.str()), "");
    }

    // All cells, "|" after each; on a failure the engine's message.
    std::string run(const std::string& sql)
    {
        std::string cells;
        const auto add = [](void* all, int count, char** texts, char**) {
            for (int n = 0; n < count; ++n)
                *static_cast<std::string*>(all) += std::string(texts[n] ? texts[n] : "NULL") + "|";
            return 0;
        };
        const int code = sqlite3_exec(plain_, sql.c_str(), add, &cells, nullptr);
        return code == SQLITE_OK ? cells : sqlite3_errmsg(plain_);
    }

private:
    sqlite3* plain_ = nullptr;
};

TEST_F(RescueSqlTest, WithoutTheViewsThePlainEngineCountsOnlyOutsideTheIndexes)
{
    EXPECT_EQ(run("SELECT count(*) FROM tblTolvek"), "no such collation sequence: GENERAL");
    EXPECT_EQ(run("SELECT count(*) FROM tblTolvek NOT INDEXED"), "3|");
}

TEST_F(RescueSqlTest, TheViewsAreCountedSortedGroupedAndSearched)
{
    addViews();
    EXPECT_EQ(run("SELECT count(*) FROM mails"), "3|");
    EXPECT_EQ(run("SELECT count(*), min(day), max(day) FROM mails"), "3|20000215|20000217|");
    EXPECT_EQ(run("SELECT subject FROM mails ORDER BY day, time"), "一|二|三|");
    EXPECT_EQ(run("SELECT count(*) FROM mails GROUP BY sender_address"), "1|2|");
    EXPECT_EQ(run("SELECT DISTINCT receiver_address FROM mails"), "taro@example.jp|");
    EXPECT_EQ(run("SELECT count(*) FROM mails WHERE text LIKE '%本文%' AND NOT sent"), "3|");
    EXPECT_EQ(run("SELECT address, name, pet FROM friends ORDER BY name"), "a@x.jp|花子|もも|");
    EXPECT_EQ(run("SELECT number, title, wanted FROM rules ORDER BY number"), "10|題|一|");
}

TEST_F(RescueSqlTest, TheTextIsAllSixteenBlocksInTheirOrder)
{
    Statement blocks{u"UPDATE tblTolvek SET tblTolvek_Mail1 = '1'"};
    std::string expected = "1";
    for (int n = 2; n <= 16; ++n) {
        blocks << u", tblTolvek_Mail" << n << u" = '" << decimal(n) << u"'";
        expected += std::to_string(n);
    }
    execute(blocks);
    addViews();
    EXPECT_EQ(run("SELECT DISTINCT text FROM mails"), expected + "|");
}

}
}
