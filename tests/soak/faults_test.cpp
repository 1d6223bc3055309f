// One program whose work is cut off: it is killed before a file operation, the operation
// fails, or the power is cut. A later start finds every mail.
#include "platform/runtime/test_hooks.h"
#include "platform/system/test_hooks.h"
#include "soak_fixture.h"

#include <QWidget>

namespace tolvek::test {
namespace {

struct Fault {
    const char* work;
    const char* what;
};

class FaultsTest : public BackUpTest, public ::testing::WithParamInterface<Fault> {
protected:
    void SetUp() override
    {
        BackUpTest::SetUp();
        form.window()->hide(); // a forked child doesn't get the threads that paint
        hooks::setMsgBox([](const MsgBoxRequest& box) {
            return box.buttons == MsgButtons::YesNo ? MsgAnswer::Yes : MsgAnswer::Ok;
        });
        writeBytes(file("TOLVEK.ini"), "[Tolvek Environment]\r\nVer=331\r\n");
        dbCompress(gDbPath); // so that there is a previous generation
        kept.keep();
    }
    void start()
    {
        tillItsEnd([] { prepareDatabase(u"331", [](TextView) {}); });
    }
    void work()
    {
        const std::string name = GetParam().work;
        if (name == "start") start();
        if (name == "read") errorOfStoring(u"third");
        if (name == "backup") tillItsEnd([this] { memBackUp_FileEdit_Click(form); });
    }
    // Runs in a process that ends at the operation; false if it doesn't get that far.
    bool isCutOff(
        int operation, const std::function<void()>& lastWords = [] {}, const FileProbe& always = {})
    {
        return !gotThrough(
            operation, [this] { work(); }, always, lastWords);
    }
    static bool gotThrough(int operation, const std::function<void()>& run, const FileProbe& always,
                           const std::function<void()>& lastWords)
    {
        ChildProcess child([&] {
            const auto end = [&] {
                const auto words = lastWords; // this function goes with the probe
                hooks::setFileProbe({});
                words();
                leaveProcess(kCutOff);
            };
            faultAt(operation, end, always);
            run();
            return 0;
        });
        const int code = child.exitCode();
        EXPECT_TRUE(code == 0 || code == kCutOff) << code;
        return code == 0;
    }
    bool isFailed(int operation)
    {
        bool failed = false;
        faultAt(operation, [&failed] {
            failed = true;
            throw std::system_error(std::make_error_code(std::errc::io_error));
        });
        work();
        hooks::setFileProbe({});
        return failed;
    }
    bool isPowerCut(int operation, Unforced unforced)
    {
        PowerCut disk(folder.path());
        return isCutOff(
            operation, [&] { disk.cut(unforced); },
            [&](FileOperation asked, const Path& path) { disk.before(asked, path); });
    }
    bool disturbed(int operation)
    {
        const std::string what = GetParam().what;
        if (what == "killed") return isCutOff(operation);
        if (what == "failing") return isFailed(operation);
        return isPowerCut(operation, what == "lost" ? Unforced::Lost : Unforced::Torn);
    }
    void expectNothingLost(int operation)
    {
        start();
        ASSERT_TRUE(databaseExists(gDbPath)) << "operation " << operation;
        Subjects found = subjectsAt(gDbPath);
        if (databaseExists(pathOf(u"Tolvek_20000225.Mdb")))
            found.merge(subjectsAt(pathOf(u"Tolvek_20000225.Mdb")));
        found.erase(u"third");
        EXPECT_EQ(found, (Subjects{u"first", u"second"})) << "operation " << operation;
        EXPECT_EQ(rows(u"tblFriend"), 1) << "operation " << operation;
    }

    KeptFolder kept{folder.path()};
};

TEST_P(FaultsTest, LoseNoMail)
{
    int operation = 0;
    for (; disturbed(operation); operation += soakStep(29)) {
        expectNothingLost(operation);
        kept.putBack();
    }
    EXPECT_GT(operation, 10);
}

std::vector<Fault> allFaults()
{
    std::vector<Fault> all;
    for (const char* work : {"start", "read", "backup"})
        for (const char* what : {"killed", "failing", "lost", "torn"})
            all.push_back({work, what});
    return all;
}

INSTANTIATE_TEST_SUITE_P(OfEachWork, FaultsTest, ::testing::ValuesIn(allFaults()),
                         [](const auto& fault) {
                             return std::string(fault.param.work) + "_" + fault.param.what;
                         });

}
}
