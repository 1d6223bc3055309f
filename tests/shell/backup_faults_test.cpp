// Wherever a backup is cut off or fails, every mail must exist somewhere.
#include "platform/runtime/test_hooks.h"
#include "platform/system/test_hooks.h"
#include "store/database_files.h"
#include "store/db_compress.h"
#include "store/db_start.h"
#include "support/backup_fixture.h"
#include "support/fault_injection.h"

#include <QWidget>

#include <algorithm>
#include <array>
#include <system_error>

namespace tolvek::test {
namespace {

class BackUpFaultsTest : public BackUpTest {
protected:
    void SetUp() override
    {
        BackUpTest::SetUp();
        form.window()->hide(); // painting threads aren't copied to a child process
        hooks::setMsgBox([](const MsgBoxRequest& box) {
            return box.buttons == MsgButtons::YesNo ? MsgAnswer::Yes : MsgAnswer::Ok;
        });
    }
    Text backUpPath() const { return pathOf(u"Tolvek_20000225.Mdb"); }
    void backUpByForm() { memBackUp_FileEdit_Click(form); }

    // Checks that the live store has all the mails or none, and that a backup has all
    // of them or doesn't exist. True when the live ones are gone.
    bool isMoved(int operation)
    {
        const Texts live = subjectsIn(gDbPath);
        EXPECT_TRUE(live == kBothSubjects || live.empty()) << "operation " << operation;
        if (databaseExists(backUpPath())) {
            EXPECT_EQ(subjectsIn(backUpPath()), kBothSubjects) << "operation " << operation;
        } else {
            EXPECT_EQ(live, kBothSubjects) << "operation " << operation;
        }
        EXPECT_EQ(rows(u"tblFriend"), 1) << "operation " << operation;
        EXPECT_EQ(rows(u"tblFilter"), 2) << "operation " << operation;
        return live.empty();
    }
    void check(int operation)
    {
        restoreFromNew(gDbPath); // what a start does first
        ASSERT_TRUE(databaseExists(gDbPath)) << "operation " << operation;
        const bool moved = isMoved(operation);
        dbCompress(gDbPath);
        EXPECT_EQ(isMoved(operation), moved) << "a start, operation " << operation;
        if (moved) ++movedRuns;
    }

    // Of the tables that a backup empties. In their order, the empty ones come first.
    std::ptrdiff_t emptied()
    {
        const std::array left{rows(u"tblFilterData"), rows(u"tblTolvek"),
                              rows(u"tblSearch_Addresses"), rows(u"tblSearch_Name")};
        EXPECT_TRUE(std::ranges::is_partitioned(left, [](int count) { return count == 0; }));
        return std::ranges::count(left, 0);
    }
    void failWriteAfterBackUp(int number)
    {
        hooks::setFileProbe(
            [this, number, count = 0](FileOperation operation, const Path& path) mutable {
                const bool ofLive = path.filename().string().starts_with("Tolvek.Mdb");
                if (ofLive && operation == FileOperation::Write && databaseExists(backUpPath()) &&
                    ++count == number)
                    throw std::system_error(std::make_error_code(std::errc::io_error));
            });
    }

    KeptFolder kept{folder.path()};
    int movedRuns = 0;
};

TEST_F(BackUpFaultsTest, AnEndAtAnyMomentLosesNoMail)
{
    kept.keep();
    endAtEachOperation([this] { backUpByForm(); },
                       [&](int operation) {
                           check(operation);
                           kept.putBack();
                       },
                       {}, {}, kSparse);
    EXPECT_GT(movedRuns, 10);
}

TEST_F(BackUpFaultsTest, AFailureOfAnyOperationLosesNoMail)
{
    kept.keep();
    failEachOperation([this] { backUpByForm(); },
                      [&](int operation) {
                          check(operation);
                          kept.putBack();
                      },
                      {}, {}, kSparse);
    EXPECT_GT(movedRuns, 10);
}

TEST_F(BackUpFaultsTest, TheTablesAreEmptiedOneByOneInTheirOrder)
{
    kept.keep();
    std::vector<std::ptrdiff_t> counts;
    for (int number = 1; number < 100 && (counts.empty() || counts.back() < 4); ++number) {
        failWriteAfterBackUp(number);
        backUpByForm();
        hooks::setFileProbe({});
        counts.push_back(emptied());
        kept.putBack();
    }
    counts.erase(std::unique(counts.begin(), counts.end()), counts.end());
    EXPECT_EQ(counts, (std::vector<std::ptrdiff_t>{0, 1, 2, 3, 4}));
}

// After a power cut only flushed data remain: the backup's contents and then its name
// are flushed before the first row is deleted.
TEST_F(BackUpFaultsTest, TheBackUpIsOnTheDiskBeforeTheFirstMailIsDeleted)
{
    std::vector<std::string> seen;
    hooks::setFileProbe([&](FileOperation operation, const Path& path) {
        const std::string name = path.filename().string();
        const bool ofBackUp = name.starts_with("Tolvek_20000225.Mdb");
        const bool ofLive = name == "Tolvek.Mdb" || name.starts_with("Tolvek.Mdb-");
        if (ofBackUp && operation == FileOperation::Write) seen = {"backup written"};
        if (ofBackUp && operation == FileOperation::Flush) seen.push_back("backup flushed");
        if (ofBackUp && operation == FileOperation::Rename) seen.push_back("backup named");
        if (operation == FileOperation::FlushFolder && path == folder.path())
            seen.push_back("folder flushed");
        if (ofLive && operation == FileOperation::Write) seen.push_back("live written");
    });
    backUpByForm();
    hooks::setFileProbe({});
    const auto live = std::find(seen.begin(), seen.end(), "live written");
    ASSERT_NE(live, seen.end());
    seen.erase(live + 1, seen.end());
    seen.erase(std::unique(seen.begin(), seen.end()), seen.end());
    EXPECT_EQ(seen, (std::vector<std::string>{"backup written", "backup flushed", "backup named",
                                              "folder flushed", "live written"}));
}

// A side file left by a kill doesn't block another try on the same day.
TEST_F(BackUpFaultsTest, AnotherTryOnTheSameDayGetsThrough)
{
    const auto killed = [this] {
        hooks::setFileProbe([](FileOperation operation, const Path& path) {
            if (operation == FileOperation::Rename &&
                path.filename() == "Tolvek_20000225.Mdb.Compact")
                leaveProcess(kCutOff);
        });
        backUpByForm();
        return 0;
    };
    EXPECT_EQ(ChildProcess(killed).exitCode(), kCutOff);
    ASSERT_TRUE(exists("Tolvek_20000225.Mdb.Compact"));
    backUpByForm();
    EXPECT_TRUE(isMoved(0));
    EXPECT_FALSE(exists("Tolvek_20000225.Mdb.Compact"));
}

}
}
