#include "platform/system/process.h"

#include "support/child_process.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <thread>

namespace tolvek::test {

namespace fs = std::filesystem;

// The started programs are shell scripts that write to a named pipe; reading the
// pipe waits for them.
class StartProgramTest : public testing::Test {
protected:
    StartProgramTest() { EXPECT_EQ(mkfifo(words().c_str(), 0600), 0); }

    fs::path words() const { return folder / "words"; }
    std::string said() const { return readBytes(words()); }
    // Runs the line in a shell, with its output redirected to the pipe.
    std::int32_t shell(const std::string& line) const
    {
        return startProgram("/bin/sh", {"-c", "exec >'" + words().string() + "'; " + line});
    }
    static bool exists(std::int32_t id) { return kill(id, 0) == 0; }
    // An ended child that nobody waits for would exist for ever.
    static bool vanishes(std::int32_t id)
    {
        const auto patience = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (exists(id) && std::chrono::steady_clock::now() < patience)
            std::this_thread::yield();
        return !exists(id);
    }
    static std::int32_t startEndless() { return startProgram("/bin/sleep", {"600"}); }
    static bool stops(std::int32_t id) { return kill(id, SIGKILL) == 0 && vanishes(id); }
    static std::error_code failureOf(const fs::path& program)
    {
        try {
            startProgram(program);
        } catch (const std::system_error& failure) {
            return failure.code();
        }
        return {};
    }

    TempFolder folder;
};

TEST_F(StartProgramTest, GivesTheIdOfTheProgramItself)
{
    const auto id = shell("echo $$");
    EXPECT_EQ(said(), std::to_string(id) + "\n");
}

TEST_F(StartProgramTest, HandsOverTheArgumentsAsTheyAre)
{
    startProgram("/bin/sh", {"-c", "printf '%s|' \"$@\" >\"$0\"", words().string(), "a b", "",
                             "$HOME", "写真"});
    EXPECT_EQ(said(), "a b||$HOME|写真|");
}

TEST_F(StartProgramTest, DoesntWaitForItsEnd)
{
    const auto id = startEndless();
    EXPECT_TRUE(exists(id));
    EXPECT_TRUE(stops(id));
}

TEST_F(StartProgramTest, AnEndedProgramLeavesNothingBehind)
{
    EXPECT_TRUE(vanishes(startProgram("/bin/true")));
}

TEST_F(StartProgramTest, NoFileOfThisProgramStaysOpenInIt)
{
    int ends[2];
    ASSERT_EQ(pipe(ends), 0) << "one that a program would inherit";
    const auto id = startEndless();
    close(ends[1]);
    char byte = 0;
    EXPECT_EQ(read(ends[0], &byte, 1), 0) << "the other end is closed everywhere";
    close(ends[0]);
    EXPECT_TRUE(stops(id));
}

TEST_F(StartProgramTest, StandsInASessionOfItsOwn)
{
    const auto id = startEndless();
    EXPECT_EQ(getsid(id), id);
    EXPECT_TRUE(stops(id));
}

// It writes only when the pipe is read, which is after the end of the program that
// started it.
TEST_F(StartProgramTest, OutlivesTheProgramThatStartedIt)
{
    ChildProcess starter([this] {
        shell("echo alive");
        return 5;
    });
    EXPECT_EQ(starter.exitCode(), 5);
    EXPECT_EQ(said(), "alive\n");
}

TEST_F(StartProgramTest, AMissingProgramIsToldByItsCode)
{
    EXPECT_EQ(failureOf(folder / "gone"), std::errc::no_such_file_or_directory);
    EXPECT_EQ(failureOf(folder / "words" / "gone"), std::errc::not_a_directory);
    EXPECT_EQ(failureOf(""), std::errc::no_such_file_or_directory);
}

TEST_F(StartProgramTest, OneThatCantBeRunIsToldByItsCode)
{
    writeBytes(folder / "text", "no program");
    EXPECT_EQ(failureOf(folder / "text"), std::errc::permission_denied);
    EXPECT_EQ(failureOf(folder.path()), std::errc::permission_denied);
    fs::permissions(folder / "text", fs::perms(0755));
    EXPECT_EQ(failureOf(folder / "text"), std::errc::executable_format_error);
}

// The emulation layer is a script that prints what it was asked to run.
class StartProgramWindowsTest : public StartProgramTest {
protected:
    StartProgramWindowsTest() : path_(std::getenv("PATH"))
    {
        fs::create_directory(folder / "bin");
        writeBytes(program(), "MZ\x90");
    }
    ~StartProgramWindowsTest() override { setenv("PATH", path_.c_str(), 1); }

    fs::path program() const { return folder / "PostPet20.EXE"; }
    void givenScript(const fs::path& script) const
    {
        writeBytes(script, "#!/bin/sh\nprintf '%s|' \"$0\" \"$@\" >'" + words().string() + "'\n");
        fs::permissions(script, fs::perms(0755));
    }
    void givenLayer() const
    {
        givenScript(folder / "bin" / "wine");
        setenv("PATH", (folder / "bin").c_str(), 1);
    }
    void givenNoLayer() const { setenv("PATH", (folder / "bin").c_str(), 1); }

private:
    std::string path_;
};

TEST_F(StartProgramWindowsTest, IsRunByTheInstalledEmulationLayer)
{
    givenLayer();
    for (const auto mode : {fs::perms(0755), fs::perms(0644)}) {
        fs::permissions(program(), mode);
        EXPECT_GT(startProgram(program(), {"a b"}), 0);
        EXPECT_EQ(said(), (folder / "bin" / "wine").string() + "|" + program().string() + "|a b|");
    }
}

TEST_F(StartProgramWindowsTest, WithoutTheLayerTheSystemsFailureIsTold)
{
    givenNoLayer();
    EXPECT_EQ(failureOf(program()), std::errc::permission_denied);
    fs::permissions(program(), fs::perms(0755));
    EXPECT_EQ(failureOf(program()), std::errc::executable_format_error);
}

TEST_F(StartProgramWindowsTest, OnlyAWindowsProgramGoesToTheLayer)
{
    givenLayer();
    writeBytes(folder / "text.exe", "no program");
    writeBytes(folder / "program", "MZ\x90");
    EXPECT_EQ(failureOf(folder / "text.exe"), std::errc::permission_denied);
    EXPECT_EQ(failureOf(folder / "program"), std::errc::permission_denied);
    EXPECT_EQ(failureOf(folder / "gone.exe"), std::errc::no_such_file_or_directory);
}

TEST_F(StartProgramWindowsTest, OneThatTheSystemCanRunStartsDirectly)
{
    givenLayer();
    givenScript(folder / "own.exe");
    startProgram(folder / "own.exe");
    EXPECT_EQ(said(), (folder / "own.exe").string() + "|");
}

TEST_F(StartProgramTest, ABareNameIsNoInstalledProgram)
{
    EXPECT_EQ(failureOf("sh"), std::errc::no_such_file_or_directory);
    EXPECT_TRUE(installedProgram("sh").has_value());
}

}
