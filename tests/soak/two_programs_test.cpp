// Two programs on one archive, as if no lock kept the second one from starting. One is
// stopped before each of its file operations in turn, while the other reads, backs up or
// starts. No mail is lost: neither the earlier ones nor one that is stored in between.
#include "app/file_names.h"
#include "platform/dao/test_hooks.h"
#include "platform/runtime/test_hooks.h"
#include "shell/store_commands.h"
#include "soak_fixture.h"
#include "store/text_dump.h"

#include <QWidget>

namespace tolvek::test {
namespace {

struct TwoWorks {
    const char* held;
    const char* beside;
};

class TwoProgramsTest : public BackUpTest, public ::testing::WithParamInterface<TwoWorks> {
protected:
    void SetUp() override
    {
        BackUpTest::SetUp();
        form.window()->hide(); // a forked child doesn't get the threads that paint
        hooks::setPatience(std::chrono::milliseconds(20));
        hooks::setMsgBox([](const MsgBoxRequest& box) {
            return box.buttons == MsgButtons::YesNo ? MsgAnswer::Yes : MsgAnswer::Ok;
        });
        writeBytes(file("TOLVEK.ini"), "[Tolvek Environment]\r\nVer=331\r\n");
        dbUnLoad();
        DBEngine::Rest();
        kept.keep();
    }
    void TearDown() override
    {
        hooks::setPatience({});
        BackUpTest::TearDown();
    }

    void start()
    {
        tillItsEnd([] { prepareDatabase(u"331", [](TextView) {}); });
    }
    void read()
    {
        if (errorOfStoring(u"meanwhile") == 0) stored = true;
    }
    void backUpByForm()
    {
        tillItsEnd([this] { memBackUp_FileEdit_Click(form); });
    }
    void work(const std::string& name)
    {
        if (name == "start") start();
        if (name == "read") read();
        if (name == "backup") backUpByForm();
        if (name == "load") tillItsEnd([this] { memInport_Click(form); });
    }
    // In the archive, in the dated backup, or in a file that a load has kept.
    Subjects everywhere()
    {
        Subjects found = subjectsAt(gDbPath);
        for (const TextView name : {u"Tolvek_20000225.Mdb", u"Tolvek.Mdb.BeforeLoad"})
            if (databaseExists(pathOf(name))) found.merge(subjectsAt(pathOf(name)));
        return found;
    }
    void expectNothingLost(int operation)
    {
        start(); // the next start, without another program
        Subjects expected{u"first", u"second"};
        if (stored) expected.insert(u"meanwhile");
        ASSERT_TRUE(databaseExists(gDbPath)) << "operation " << operation;
        Subjects found = everywhere();
        if (!stored) found.erase(u"meanwhile"); // the stopped program may have stored it
        EXPECT_EQ(found, expected) << "operation " << operation;
        EXPECT_EQ(rows(u"tblFriend"), 1) << "operation " << operation;
    }
    // False if the stopped work has fewer operations.
    bool disturbed(int operation)
    {
        stored = false;
        HeldProgram held(
            operation, [this] { work(GetParam().held); }, isOfNote);
        const bool stopped = held.isStopped();
        if (stopped) work(GetParam().beside);
        EXPECT_EQ(stopped ? held.finish() : 0, 0) << "operation " << operation;
        if (stopped) expectNothingLost(operation);
        kept.putBack();
        return stopped;
    }
    // There are hundreds of reads and writes of pages in a row.
    static bool isOfNote(const Path& path)
    {
        const std::string name = path.filename().string();
        return std::getenv("TOLVEK_SOAK") || !name.ends_with(toUtf8(DBEngine::kUnfinishedSuffix));
    }

    KeptFolder kept{folder.path()};
    bool stored = false;
};

TEST_P(TwoProgramsTest, LoseNoMailWhereverOneIsStopped)
{
    int operation = 0;
    while (disturbed(operation))
        operation += soakStep(37);
    EXPECT_GT(operation, 20);
}

INSTANTIATE_TEST_SUITE_P(OnOneArchive, TwoProgramsTest,
                         ::testing::Values(TwoWorks{"start", "read"}, TwoWorks{"start", "start"},
                                           TwoWorks{"start", "backup"}, TwoWorks{"backup", "read"},
                                           TwoWorks{"backup", "start"},
                                           TwoWorks{"backup", "backup"}, TwoWorks{"read", "start"},
                                           TwoWorks{"read", "backup"}, TwoWorks{"read", "read"},
                                           TwoWorks{"load", "read"}, TwoWorks{"load", "start"}),
                         [](const auto& works) {
                             return std::string(works.param.held) + "_" + works.param.beside;
                         });

// Two upgrades of one archive: one of them succeeds, and the other leaves it alone.
class TwoProgramsUpgradeTest : public UpgradeFixture {
protected:
    void SetUp() override
    {
        UpgradeFixture::SetUp();
        hooks::setPatience(std::chrono::milliseconds(20));
        hooks::setMsgBox([](const MsgBoxRequest& box) {
            return box.buttons == MsgButtons::YesNo ? MsgAnswer::Yes : MsgAnswer::Ok;
        });
        givenOldArchive();
        givenOldRows();
        givenVersion("210");
        before = oldFieldsOf(gDbPath);
        kept.keep();
    }
    void TearDown() override
    {
        hooks::setPatience({});
        UpgradeFixture::TearDown();
    }
    void start()
    {
        tillItsEnd([this] { prepareDatabase(version(), [](TextView) {}); });
    }
    // The end of the program also writes the version; only the upgrade's write counts here.
    bool disturbed(int operation)
    {
        const auto counts = [](const Path& path) {
            const std::string name = path.filename().string();
            return std::getenv("TOLVEK_SOAK") ||
                   (!name.ends_with(toUtf8(DBEngine::kUnfinishedSuffix)) &&
                    !name.ends_with(toUtf8(kCreateSuffix)));
        };
        const Text old = version();
        HeldProgram held(
            operation, [&] { tillItsEnd([&] { prepareDatabase(old, [](TextView) {}); }); }, counts);
        const bool stopped = held.isStopped();
        if (stopped) start();
        const bool stored = stopped && errorOfStoring(u"meanwhile") == 0;
        EXPECT_EQ(stopped ? held.finish() : 0, 0) << "operation " << operation;
        start();
        start();
        expectWhole(operation, stored);
        kept.putBack();
        return stopped;
    }
    void expectWhole(int operation, bool stored)
    {
        ASSERT_TRUE(isUpgraded(gDbPath)) << "operation " << operation;
        EXPECT_EQ(subjectsAt(gDbPath).contains(u"meanwhile"), stored) << "operation " << operation;
        execute(Statement{u"DELETE FROM tblTolvek WHERE tblTolvek_Subject = 'meanwhile'"});
        EXPECT_EQ(oldFieldsOf(gDbPath), before) << "operation " << operation;
        EXPECT_FALSE(exists("Tolvek.Mdb.Upgrade")) << "operation " << operation;
    }

    Archive before;
    KeptFolder kept{folder.path()};
};

TEST_F(TwoProgramsUpgradeTest, OneWinsWhereverTheOtherIsStopped)
{
    int operation = 0;
    while (disturbed(operation))
        operation += soakStep(61);
    EXPECT_GT(operation, 20);
}

}
}
