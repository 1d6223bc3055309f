#include "platform/system/process_list.h"
#include "platform/system/test_hooks.h"

#include "platform/system/process.h"

#include <gtest/gtest.h>

#include <csignal>
#include <system_error>
#include <unistd.h>

namespace tolvek::test {

class ProcessListTest : public testing::Test {
protected:
    ~ProcessListTest() override { hooks::setProcessLister({}); }

    static void givenPrograms(std::vector<RunningProgram> programs)
    {
        hooks::setProcessLister([programs = std::move(programs)] { return programs; });
    }
    static PROCESSENTRY32 record()
    {
        PROCESSENTRY32 entry;
        entry.dwSize = kProcessEntrySize;
        return entry;
    }
    static SnapshotHandle snapshot() { return CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0); }
    static std::vector<std::string> listed()
    {
        std::vector<std::string> names;
        const SnapshotHandle taken = snapshot();
        PROCESSENTRY32 entry = record();
        for (bool more = Process32First(taken, entry); more; more = Process32Next(taken, entry))
            names.push_back(std::to_string(entry.th32ProcessID) + " " + entry.szExeFile);
        CloseHandle(taken);
        return names;
    }
    static bool lists(std::int32_t id, const std::string& path)
    {
        const std::vector<std::string> all = listed();
        return std::find(all.begin(), all.end(), std::to_string(id) + " " + path) != all.end();
    }
};

TEST_F(ProcessListTest, ThisProcessIsListedWithItsWholePath)
{
    EXPECT_TRUE(lists(getpid(), std::filesystem::canonical("/proc/self/exe").string()));
}

TEST_F(ProcessListTest, AStartedProgramIsListedUntilItEnds)
{
    const std::int32_t id = startProgram("/bin/sleep", {"600"});
    const std::string path = std::filesystem::canonical("/bin/sleep").string();
    EXPECT_TRUE(lists(id, path));
    kill(id, SIGKILL);
    while (kill(id, 0) == 0)
        sleepMilliseconds(1);
    EXPECT_FALSE(lists(id, path));
}

TEST_F(ProcessListTest, EveryProcessComesOnceAndInOrder)
{
    givenPrograms({{3, "/a"}, {5, "/b"}, {4, "/a"}});
    EXPECT_EQ(listed(), (std::vector<std::string>{"3 /a", "5 /b", "4 /a"}));
    givenPrograms({});
    EXPECT_EQ(listed(), std::vector<std::string>{});
}

TEST_F(ProcessListTest, APathThatDoesntFitIsntListed)
{
    const std::string longest(259, 'x');
    givenPrograms({{1, longest + "x"}, {2, longest}, {3, "/short"}});
    EXPECT_EQ(listed(), (std::vector<std::string>{"2 " + longest, "3 /short"}))
        << "nothing of a longer name follows it";
}

TEST_F(ProcessListTest, FirstBeginsAgain)
{
    givenPrograms({{1, "/a"}, {2, "/b"}});
    const SnapshotHandle taken = snapshot();
    PROCESSENTRY32 entry = record();
    EXPECT_TRUE(Process32First(taken, entry));
    EXPECT_TRUE(Process32Next(taken, entry));
    EXPECT_FALSE(Process32Next(taken, entry));
    EXPECT_TRUE(Process32First(taken, entry));
    EXPECT_EQ(entry.th32ProcessID, 1U);
    CloseHandle(taken);
}

TEST_F(ProcessListTest, ASnapshotStaysAsItWasTaken)
{
    givenPrograms({{1, "/a"}});
    const SnapshotHandle taken = snapshot();
    givenPrograms({{2, "/b"}});
    PROCESSENTRY32 entry = record();
    EXPECT_TRUE(Process32First(taken, entry));
    EXPECT_EQ(entry.th32ProcessID, 1U);
    CloseHandle(taken);
}

TEST_F(ProcessListTest, WrongCallsFail)
{
    EXPECT_EQ(CreateToolhelp32Snapshot(4, 0), kNoSnapshot);
    EXPECT_EQ(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 1), kNoSnapshot);
    PROCESSENTRY32 entry = record();
    EXPECT_FALSE(Process32First(kNoSnapshot, entry));
    const SnapshotHandle taken = snapshot();
    entry.dwSize = 296;
    EXPECT_FALSE(Process32First(taken, entry));
    entry.dwSize = kProcessEntrySize;
    EXPECT_TRUE(Process32First(taken, entry));
    CloseHandle(taken);
    EXPECT_FALSE(Process32Next(taken, entry));
}

TEST_F(ProcessListTest, ASystemThatTellsNothingIsAFailedSnapshot)
{
    hooks::setProcessLister([]() -> std::vector<RunningProgram> {
        throw std::system_error(std::make_error_code(std::errc::permission_denied));
    });
    EXPECT_EQ(snapshot(), kNoSnapshot);
}

}
