// When a start converts an archive of the classic platform to this program's format,
// the rows are converted and the original stays.
#include "platform/dao/connection.h"
#include "platform/runtime/test_hooks.h"
#include "platform/system/test_hooks.h"
#include "store/database_files.h"
#include "store/db_compress.h"
#include "store/db_start.h"
#include "support/archive_fixture.h"
#include "support/fault_injection.h"
#include "support/jet_reader.h"
#include "support/jet_tables.h"
#include "support/test_data.h"

#include <algorithm>

namespace tolvek::test {
namespace {

using Names = std::vector<std::string>;

class JetOriginalTest : public ArchiveFixture {
protected:
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        removeDatabase(gDbPath);
    }
    void TearDown() override
    {
        DBEngine::Abandon();
        ArchiveFixture::TearDown();
    }
    static std::string original(const std::string& name)
    {
        return readBytes(Path(TOLVEK_TEST_DATA) / "jet" / (name + ".mdb"));
    }
    // As a user does it: another file under that name.
    void given(const std::string& name, const std::string& as = "Tolvek.Mdb")
    {
        std::filesystem::remove(file(as));
        writeBytes(file(as), original(name));
    }
    // Opens it as a file of our own format, which fails for a Jet file.
    JetTables rowsOf(const std::string& name) { return tablesOf(*Connection::open(file(name))); }
    Names left() const
    {
        Names names = fileNames(folder.path());
        std::sort(names.begin(), names.end());
        return names;
    }
    static void refuseLinks(FileOperation operation, const Path&)
    {
        if (operation == FileOperation::Link)
            throw std::system_error(std::make_error_code(std::errc::operation_not_permitted));
    }

    JetReader reader;
};

TEST_F(JetOriginalTest, TheRowsComeOverAndTheOriginalStaysTwice)
{
    given("current_jet4");
    dbCompress(gDbPath);
    EXPECT_EQ(rowsOf("Tolvek.Mdb"), expectedTables("current_jet4"));
    EXPECT_EQ(readBytes(file("Tolvek.Mdb.Bak")), original("current_jet4"));
    EXPECT_EQ(readBytes(file("Tolvek.Mdb.Jet")), original("current_jet4"));
    EXPECT_EQ(left(), (Names{"Tolvek.Mdb", "Tolvek.Mdb.Bak", "Tolvek.Mdb.Jet"}));
}

TEST_F(JetOriginalTest, LaterStartsKeepItAndMakeNoSecond)
{
    given("current_jet4");
    for (int start = 0; start < 3; ++start)
        dbCompress(gDbPath);
    EXPECT_EQ(rowsOf("Tolvek.Mdb"), expectedTables("current_jet4"));
    EXPECT_EQ(rowsOf("Tolvek.Mdb.Bak"), expectedTables("current_jet4"));
    EXPECT_EQ(readBytes(file("Tolvek.Mdb.Jet")), original("current_jet4"));
    EXPECT_EQ(left().size(), 3u);
}

TEST_F(JetOriginalTest, TheSameOneBroughtAgainIsntKeptTwiceAndAnotherIs)
{
    for (const char* name : {"empty_current_jet4", "empty_current_jet4", "current_jet4",
                             "empty_current_jet4", "current_jet4"}) {
        given(name);
        dbCompress(gDbPath);
        EXPECT_EQ(rowsOf("Tolvek.Mdb"), expectedTables(name));
    }
    EXPECT_EQ(readBytes(file("Tolvek.Mdb.Jet")), original("empty_current_jet4"));
    EXPECT_EQ(readBytes(file("Tolvek.Mdb.Jet2")), original("current_jet4"));
    EXPECT_FALSE(exists("Tolvek.Mdb.Jet3"));
}

TEST_F(JetOriginalTest, WithoutSecondNamesItIsACopy)
{
    given("current_jet4");
    hooks::setFileProbe(refuseLinks);
    dbCompress(gDbPath);
    hooks::setFileProbe({});
    EXPECT_EQ(rowsOf("Tolvek.Mdb"), expectedTables("current_jet4"));
    EXPECT_EQ(readBytes(file("Tolvek.Mdb.Bak")), original("current_jet4"));
    EXPECT_EQ(readBytes(file("Tolvek.Mdb.Jet")), original("current_jet4"));
    EXPECT_FALSE(std::filesystem::equivalent(file("Tolvek.Mdb.Bak"), file("Tolvek.Mdb.Jet")));
    EXPECT_EQ(left().size(), 3u);
}

TEST_F(JetOriginalTest, AnOriginalThatCantBeKeptIsntReplaced)
{
    given("current_jet4");
    hooks::setFileProbe([](FileOperation, const Path& path) {
        if (path.filename() == "Tolvek.Mdb.Jet")
            throw std::system_error(std::make_error_code(std::errc::no_space_on_device));
    });
    std::vector<Text> titles;
    hooks::setMsgBox([&](const MsgBoxRequest& box) {
        titles.push_back(box.title);
        return MsgAnswer::Ok;
    });
    dbCompress(gDbPath);
    hooks::setFileProbe({});
    EXPECT_EQ(titles, std::vector<Text>{u"エラーメッセージ (dbCompress)"});
    EXPECT_EQ(readBytes(file("Tolvek.Mdb")), original("current_jet4"));
}

// A compaction on the classic platform that was cut off between its renames.
TEST_F(JetOriginalTest, ACutOffRotationOfTheHomePlatformIsEndedWithItsOriginalKept)
{
    given("current_jet4", "Tolvek.Mdb.New");
    restoreFromNew(gDbPath);
    EXPECT_EQ(rowsOf("Tolvek.Mdb"), expectedTables("current_jet4"));
    EXPECT_EQ(readBytes(file("Tolvek.Mdb.Jet")), original("current_jet4"));
    EXPECT_EQ(left(), (Names{"Tolvek.Mdb", "Tolvek.Mdb.Jet"}));
}

constexpr TextView kRepair = u"DBの読み込み中にエラーが発生しました。\r\n"
                             u"   BackUpファイルから修復しますか？";
constexpr TextView kAnew = u"DBの読み込み中にエラーが発生しました。\r\n"
                           u"   新しい DB を作りますか？";
constexpr TextView kBroken = u"DB が壊れています\r\n   修復が必要です。";

class JetOriginalBrokenTest : public JetOriginalTest,
                              public ::testing::WithParamInterface<const char*> {
protected:
    void SetUp() override
    {
        JetOriginalTest::SetUp();
        given(GetParam());
    }
    void expectRefusal(TextView question)
    {
        const Names before = left();
        boxes.expect(question, MsgAnswer::No, u"Tolvek");
        boxes.expect(kBroken, MsgAnswer::Ok, u"Tolvek");
        EXPECT_THROW(dbCompress(gDbPath), ProgramEnd);
        EXPECT_EQ(left(), before);
        EXPECT_EQ(readBytes(file("Tolvek.Mdb")), original(GetParam()));
    }
};

TEST_P(JetOriginalBrokenTest, WithoutABakOnNoItStaysAsItIs)
{
    expectRefusal(kAnew);
}

TEST_P(JetOriginalBrokenTest, WithABakOnNoBothStayAsTheyAre)
{
    given("current_jet4", "Tolvek.Mdb.Bak");
    expectRefusal(kRepair);
    EXPECT_EQ(readBytes(file("Tolvek.Mdb.Bak")), original("current_jet4"));
}

TEST_P(JetOriginalBrokenTest, WithABakOnYesItIsRepairedAndBothOriginalsStay)
{
    given("current_jet4", "Tolvek.Mdb.Bak");
    boxes.expect(kRepair, MsgAnswer::Yes);
    dbCompress(gDbPath);
    EXPECT_EQ(rowsOf("Tolvek.Mdb"), expectedTables("current_jet4"));
    EXPECT_EQ(rowsOf("Tolvek.Mdb.Bak"), expectedTables("current_jet4"));
    EXPECT_EQ(readBytes(file("Tolvek.Mdb.Jet")), original(GetParam()));
    EXPECT_EQ(readBytes(file("Tolvek.Mdb.Jet2")), original("current_jet4"));
    EXPECT_EQ(left(), (Names{"Tolvek.Mdb", "Tolvek.Mdb.Bak", "Tolvek.Mdb.Jet", "Tolvek.Mdb.Jet2"}));
}

TEST_P(JetOriginalBrokenTest, WithoutABakOnYesThereIsAnEmptyBakAndNoDatabaseAndTheOriginalStays)
{
    boxes.expect(kAnew, MsgAnswer::Yes);
    dbCompress(gDbPath);
    EXPECT_EQ(readBytes(file("Tolvek.Mdb.Jet")), original(GetParam()));
    EXPECT_EQ(left(), (Names{"Tolvek.Mdb.Bak", "Tolvek.Mdb.Jet"}));
    EXPECT_EQ(rowsOf("Tolvek.Mdb.Bak"), expectedTables("empty_current_jet4"));
}

INSTANTIATE_TEST_SUITE_P(Files, JetOriginalBrokenTest,
                         ::testing::Values("damaged_jet4", "truncated_jet4"),
                         [](const auto& file) { return std::string(file.param); });

class JetOriginalFaultsTest : public JetOriginalTest, public ::testing::WithParamInterface<bool> {
protected:
    void SetUp() override
    {
        JetOriginalTest::SetUp();
        hooks::setMsgBox([](const MsgBoxRequest&) { return MsgAnswer::Ok; });
        given("empty_current_jet4");
        kept.keep();
    }
    // The conversion to the side file has tests of its own.
    static bool isOfTheRotation(const Path& path)
    {
        return path.filename().string().starts_with("Tolvek.Mdb") &&
               path.extension() != toUtf8(DBEngine::kUnfinishedSuffix);
    }
    static FileProbe disk() { return GetParam() ? FileProbe() : FileProbe(refuseLinks); }
    static void compact() { dbCompress(gDbPath); }

    bool holdsTheOriginal(const std::string& name) const
    {
        return exists(name) && readBytes(file(name)) == original("empty_current_jet4");
    }
    void check(int operation)
    {
        const ::testing::ScopedTrace where(__FILE__, __LINE__, std::to_string(operation));
        EXPECT_TRUE(holdsTheOriginal("Tolvek.Mdb") || holdsTheOriginal("Tolvek.Mdb.Bak") ||
                    holdsTheOriginal("Tolvek.Mdb.Jet"));
        restoreFromNew(gDbPath); // what a start does first
        dbCompress(gDbPath);
        EXPECT_EQ(rowsOf("Tolvek.Mdb"), expectedTables("empty_current_jet4"));
        EXPECT_TRUE(holdsTheOriginal("Tolvek.Mdb.Jet"));
        EXPECT_FALSE(exists("Tolvek.Mdb.Jet2"));
        kept.putBack();
    }

    KeptFolder kept{folder.path()};
};

TEST_P(JetOriginalFaultsTest, AnEndAtAnyMomentLeavesTheOriginal)
{
    endAtEachOperation(
        compact, [this](int operation) { check(operation); }, disk(), isOfTheRotation);
}

TEST_P(JetOriginalFaultsTest, AFailureOfAnyOperationLeavesTheOriginal)
{
    failEachOperation(
        compact, [this](int operation) { check(operation); }, disk(), isOfTheRotation);
}

INSTANTIATE_TEST_SUITE_P(OnDisks, JetOriginalFaultsTest, ::testing::Bool(), [](const auto& disk) {
    return disk.param ? "WithSecondNames" : "WithoutSecondNames";
});

}
}
