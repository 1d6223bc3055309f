#include "platform/system/child_program.h"
#include "platform/system/files.h"
#include "platform/system/test_hooks.h"
#include "support/temp_folder.h"

#include <fcntl.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

using How = ChildEnd::How;

class ChildProgramTest : public testing::Test {
protected:
    ChildProgramTest() { writeBytes(input, "abc"); }
    ~ChildProgramTest() override { hooks::setFileProbe({}); }

    // Runs a shell script with the arguments after it.
    ChildEnd run(const std::string& script, const ChildLimits& limits = {})
    {
        return runChild("/bin/sh", {"-c", script}, input, limits,
                        [&](std::string_view bytes) { result += bytes; });
    }

    TempFolder folder;
    std::filesystem::path input = folder / "input";
    std::string result;
};

TEST_F(ChildProgramTest, ItsFileComesInAndItsResultComesOut)
{
    const ChildEnd end = run("cat >&3; exit 7");
    EXPECT_EQ(end.how, How::Exited);
    EXPECT_EQ(end.code, 7);
    EXPECT_EQ(result, "abc");
}

TEST_F(ChildProgramTest, TheFileCanBeOpenedOnceMoreByItsDescriptor)
{
    run("cat /dev/stdin /dev/stdin >&3");
    EXPECT_EQ(result, "abcabc");
}

TEST_F(ChildProgramTest, TheFileCanOnlyBeRead)
{
    run("echo changed 1<&0");
    EXPECT_EQ(readBytes(input), "abc");
}

TEST_F(ChildProgramTest, ItsOtherOutputsGoNowhere)
{
    EXPECT_EQ(run("echo out; echo error >&2; printf x >&3").code, 0);
    EXPECT_EQ(result, "x");
}

// The program lists its own descriptors: a shell that starts a pipe has some more
// for a moment. The number of this one is not used by anything else.
TEST_F(ChildProgramTest, NothingElseIsInherited)
{
    const int low = ::open(input.c_str(), O_RDONLY); // not closed by exec
    const int inherited = fcntl(low, F_DUPFD, 777);
    run("exec ls /proc/self/fd >&3");
    close(inherited);
    close(low);
    EXPECT_EQ(result, "0\n1\n2\n3\n4\n"); // the last one is the folder being listed
}

TEST_F(ChildProgramTest, TheEnvironmentIsNotInherited)
{
    setenv("TOLVEK_TEST_SECRET", "x", 1);
    run("exec cat /proc/self/environ >&3");
    unsetenv("TOLVEK_TEST_SECRET");
    EXPECT_EQ(result.find("TOLVEK_TEST_SECRET"), std::string::npos) << result;
    EXPECT_EQ(result.find("HOME="), std::string::npos) << result;
}

TEST_F(ChildProgramTest, ItGainsNoRightsAndHasFewFiles)
{
    run("exec cat /proc/self/status /proc/self/limits >&3");
    EXPECT_NE(result.find("NoNewPrivs:\t1"), std::string::npos);
    EXPECT_NE(result.find("Max open files            16 "), std::string::npos) << result;
}

TEST_F(ChildProgramTest, OneThatIsToBeAloneMayHaveNoProcesses)
{
    run("exec cat /proc/self/limits >&3", {.isAlone = true});
    EXPECT_NE(result.find("Max processes             0 "), std::string::npos) << result;
}

TEST_F(ChildProgramTest, ALargeResultComesInPieces)
{
    run("head -c 1000000 /dev/zero >&3");
    EXPECT_EQ(result.size(), 1000000u);
}

struct Signal {
    const char* name;
    How how;
};

TEST_F(ChildProgramTest, ACrashIsToldFromASignalOfSomeoneElse)
{
    for (const auto& [name, how] : {Signal{"SEGV", How::Crashed}, Signal{"ABRT", How::Crashed},
                                    Signal{"KILL", How::Stopped}, Signal{"TERM", How::Stopped},
                                    Signal{"HUP", How::Stopped}, Signal{"XCPU", How::OutOfTime}})
        EXPECT_EQ(run("kill -" + std::string(name) + " $$").how, how) << name;
}

TEST_F(ChildProgramTest, OneThatHangsIsEnded)
{
    const ChildLimits short_{.patience = std::chrono::milliseconds(100)};
    EXPECT_EQ(run("printf x >&3; exec sleep 1000", short_).how, How::OutOfTime);
    EXPECT_EQ(result, "x");
}

TEST_F(ChildProgramTest, OneThatHangsBehindItsResultIsEnded)
{
    const ChildLimits short_{.patience = std::chrono::milliseconds(100)};
    EXPECT_EQ(run("exec 3>&-; exec sleep 1000", short_).how, How::OutOfTime);
}

TEST_F(ChildProgramTest, OneThatBurnsTheProcessorIsEnded)
{
    EXPECT_EQ(run("while :; do :; done", {.processorSeconds = 1}).how, How::OutOfTime);
}

TEST_F(ChildProgramTest, MemoryIsLimited)
{
    run("ulimit -v >&3", {.addressSpace = 64U << 20});
    EXPECT_EQ(result, "65536\n");
}

TEST_F(ChildProgramTest, ItCantFillTheDisk)
{
    run("head -c 5000000 /dev/zero > " + (folder / "large").string());
    EXPECT_LE(std::filesystem::file_size(folder / "large"), 1U << 20);
}

TEST_F(ChildProgramTest, AFailureOfTheReaderOfItsResultEndsIt)
{
    const auto run = [&] {
        runChild("/bin/sh", {"-c", "echo $$ >&3; exec sleep 1000"}, input, {},
                 [&](std::string_view bytes) {
                     result = bytes;
                     throw std::runtime_error("full");
                 });
    };
    EXPECT_THROW(run(), std::runtime_error);
    EXPECT_FALSE(folderExists("/proc/" + std::to_string(std::stol(result))));
}

TEST_F(ChildProgramTest, AProgramThatCantBeStartedIsToldSo)
{
    writeBytes(folder / "no program", "text");
    for (const auto& program : {folder / "none", folder / "no program", folder.path()})
        EXPECT_THROW(runChild(program, {}, input, {}, [](std::string_view) {}), ChildStartError)
            << program;
}

TEST_F(ChildProgramTest, AMissingFileIsToldAsAnyOther)
{
    try {
        runChild("/bin/true", {}, folder / "none", {}, [](std::string_view) {});
        FAIL();
    } catch (const ChildStartError&) {
        FAIL();
    } catch (const std::system_error& error) {
        EXPECT_EQ(error.code(), std::errc::no_such_file_or_directory);
    }
}

TEST_F(ChildProgramTest, TheProbeIsAskedForFileAndProgram)
{
    std::vector<std::filesystem::path> asked;
    hooks::setFileProbe([&](FileOperation operation, const std::filesystem::path& path) {
        EXPECT_EQ(operation, FileOperation::Open);
        asked.push_back(path);
    });
    run("true");
    EXPECT_EQ(asked, (std::vector<std::filesystem::path>{input, "/bin/sh"}));
}

}
}
