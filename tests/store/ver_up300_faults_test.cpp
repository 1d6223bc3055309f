// Wherever the upgrade of an old archive is cut off or fails, no row may be lost, and an
// incomplete new archive must never be taken for the old one.
#include "app/file_names.h"
#include "platform/runtime/test_hooks.h"
#include "platform/system/test_hooks.h"
#include "store/archive_tables.h"
#include "store/db_compress.h"
#include "store/db_start.h"
#include "support/fault_injection.h"
#include "support/upgrade_fixture.h"

namespace tolvek::test {
namespace {

class VerUp300FaultsTest : public UpgradeFixture {
protected:
    void SetUp() override
    {
        UpgradeFixture::SetUp();
        hooks::setMsgBox([](const MsgBoxRequest& box) {
            return box.buttons == MsgButtons::YesNo ? MsgAnswer::Yes : MsgAnswer::Ok;
        });
        givenOldArchive();
        givenOldRows();
        givenVersion("210");
        before = oldFieldsOf(gDbPath);
        kept.keep();
    }
    void upgrade()
    {
        try {
            runUpgrade();
        } catch (const ProgramEnd&) { // a failed upgrade ends the program
        }
    }
    // Operations on the side files of a compaction or a creation have tests of their own.
    static bool isOfTheUpgrade(const Path& path)
    {
        const std::string name = path.filename().string();
        return name.find(toUtf8(kCreateSuffix)) == std::string::npos &&
               name.find(toUtf8(kNewSuffix)) == std::string::npos;
    }
    // The state that a run has left: whether `Ver` is old, and the files.
    std::string state() const
    {
        std::vector<std::string> names = fileNames(folder.path());
        std::sort(names.begin(), names.end());
        std::string all = version() == u"331" ? "new" : "old";
        for (const std::string& name : names)
            if (name.starts_with("Tolvek.")) all += " " + name.substr(6);
        return all;
    }
    // A start up to the point where it looks for the database.
    void beginNextStart()
    {
        restoreFromNew(gDbPath);
        settleCutOffUpgrade(gDbPath, version() != u"331");
        ASSERT_TRUE(databaseExists(gDbPath));
        EXPECT_EQ(isOldArchive(gDbPath), !isUpgraded(gDbPath));
        EXPECT_EQ(oldFieldsOf(gDbPath), before);
    }
    void expectUpgraded()
    {
        EXPECT_TRUE(isUpgraded(gDbPath));
        EXPECT_EQ(oldFieldsOf(gDbPath), before);
        EXPECT_EQ(oldFieldsOf(old()), before);
        EXPECT_FALSE(exists("Tolvek.Mdb.Upgrade"));
    }
    // The next upgrade is the same for all runs that left the same state.
    void check(int operation)
    {
        const std::string left = state();
        const ::testing::ScopedTrace where(__FILE__, __LINE__, std::to_string(operation) + left);
        beginNextStart();
        if (states[left]++ == 0) {
            if (isOldArchive(gDbPath)) runUpgrade();
            expectUpgraded();
        }
        kept.putBack();
    }
    int leftAs(const std::string& names) const
    {
        const auto found = states.find(names);
        return found == states.end() ? 0 : found->second;
    }

    Archive before;
    KeptFolder kept{folder.path()};
    std::map<std::string, int> states; // how often each state was left
};

TEST_F(VerUp300FaultsTest, AnEndAtAnyMomentLosesNoRow)
{
    endAtEachOperation([this] { upgrade(); }, [this](int operation) { check(operation); }, {},
                       isOfTheUpgrade);
    EXPECT_GT(leftAs("old .Mdb.Bak .Mdb.Upgrade .Mdb.V300"), 0) << "between the databases";
    EXPECT_GT(leftAs("old .Mdb .Mdb.Bak .Mdb.Upgrade .Mdb.V300"), 5) << "at the copy";
    EXPECT_GT(leftAs("old .Mdb .Mdb.Bak .Mdb.V300"), 0) << "before the version";
    EXPECT_EQ(leftAs("new .Mdb .Mdb.Bak .Mdb.Upgrade .Mdb.V300"), 0);
}

TEST_F(VerUp300FaultsTest, AFailureOfAnyOperationLosesNoRow)
{
    failEachOperation([this] { upgrade(); }, [this](int operation) { check(operation); }, {},
                      isOfTheUpgrade, kSparse);
}

class VerUp300FaultsSettleTest : public VerUp300FaultsTest {
protected:
    void SetUp() override
    {
        VerUp300FaultsTest::SetUp();
        renameDatabase(gDbPath, old());
        Table_Create();
        writeBytes(file("Tolvek.Mdb.Upgrade"), "");
        std::filesystem::remove_all(folder / "kept");
        kept.keep();
    }
    void settle()
    {
        try {
            settleCutOffUpgrade(gDbPath, true);
        } catch (const std::exception&) { // ends the start
        }
    }
};

TEST_F(VerUp300FaultsSettleTest, AWayBackThatIsCutOffOrFailsIsTakenUpAgain)
{
    constexpr int kMoreThanThereAre = 40;
    for (int operation = 0; operation < kMoreThanThereAre; ++operation) {
        gotThrough(operation, [this] { settle(); }, {});
        check(operation);
        faultAt(operation,
                [] { throw std::system_error(std::make_error_code(std::errc::io_error)); });
        settle();
        hooks::setFileProbe({});
        check(operation);
    }
}

// The rows are on the disk before the mark is removed, and the mark is removed before
// the version is written. The mark is set before the old archive is renamed.
TEST_F(VerUp300FaultsTest, WhatALaterStepRestsOnIsForcedToTheDiskBefore)
{
    std::vector<std::string> order;
    hooks::setFileProbe([&](FileOperation operation, const Path& path) {
        const std::string name = path.filename().string();
        if (operation == FileOperation::Flush && name == "Tolvek.Mdb.Upgrade")
            order.push_back("mark");
        if (operation == FileOperation::FlushFolder) order.push_back("folder");
        if (operation == FileOperation::Rename && name == "Tolvek.Mdb") order.push_back("rename");
        if (operation == FileOperation::Flush && name == "Tolvek.Mdb") order.push_back("rows");
        if (operation == FileOperation::Replace && name.find("TOLVEK") == 0)
            order.push_back("version");
        if (operation == FileOperation::Remove && name == "Tolvek.Mdb.Upgrade")
            order.push_back("unmark");
    });
    upgrade();
    hooks::setFileProbe({});
    const auto at = [&](const std::string& step) {
        return std::find(order.begin(), order.end(), step);
    };
    const auto lastRows = std::find(order.rbegin(), order.rend(), "rows").base();
    ASSERT_NE(at("mark"), order.end());
    ASSERT_NE(at("rename"), order.end());
    ASSERT_NE(at("version"), order.end());
    EXPECT_NE(std::find(at("mark"), at("rename"), "folder"), at("rename"));
    EXPECT_EQ(*std::next(at("rename")), "folder");
    EXPECT_LT(at("rename"), lastRows);
    EXPECT_LE(lastRows, at("unmark"));
    EXPECT_NE(std::find(at("unmark"), at("version"), "folder"), at("version"));
}

}
}
