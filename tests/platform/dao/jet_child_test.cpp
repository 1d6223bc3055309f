#include "jet_fixture.h"
#include "platform/dao/test_hooks.h"
#include "platform/system/test_hooks.h"

#include "platform/system/child_program.h"

#include <csignal>
#include <unistd.h>
#include <utility>

namespace tolvek::test {
namespace {

// Shell scripts instead of the real reader.
class JetChildTest : public JetTest {
protected:
    JetChildTest() { given("foreign_jet4"); }

    void readerIs(const std::string& script,
                  std::chrono::milliseconds patience = std::chrono::minutes(1))
    {
        const Path program = tools_ / "reader";
        writeBytes(program, "#!/bin/sh\n" + script);
        std::filesystem::permissions(program, std::filesystem::perms::owner_all);
        hooks::setJetReader(program, patience);
    }
    void expect(int number, const std::string& what)
    {
        EXPECT_EQ(errorOfCompacting(), number) << what;
        EXPECT_EQ(errorOfOpening(), number) << what;
        EXPECT_TRUE(isUnchanged()) << what;
        EXPECT_EQ(files(), Names{"Old.Mdb"}) << what;
    }

    // From the system's list; this process has one child at a time.
    static std::string stateOfChild()
    {
        const std::string self = std::to_string(getpid());
        std::string id = readBytes("/proc/" + self + "/task/" + self + "/children");
        return readBytes("/proc/" + id.substr(0, id.find(' ')) + "/status");
    }

    TempFolder tools_;
    const std::string hello_ = R"(printf 'H\013\000\000\000TolvekJet 1' >&3; )";
    const std::string end_ = R"(printf 'E\000\000\000\000' >&3; )";
};

TEST_F(JetChildTest, TheScriptsSpeakTheReadersForm)
{
    readerIs(hello_ + end_);
    EXPECT_EQ(errorOfCompacting(), 0);
}

TEST_F(JetChildTest, AReaderThatFailsAtTheFileIsDamage)
{
    for (const std::string script :
         {"exit 2", "exit 1", "kill -SEGV $$", "kill -ABRT $$", "kill -XCPU $$", "exit 0",
          "printf 'E\\000\\000\\000\\000' >&3; exit 2", "printf 'E\\000\\000\\000\\000x' >&3",
          "printf 'xxxxxxxxxxxxxxx' >&3", "printf 'T\\377\\377\\377\\377' >&3"}) {
        readerIs(hello_ + script);
        expect(3343, script);
    }
}

TEST_F(JetChildTest, AReaderThatHangsOverTheFileIsDamage)
{
    readerIs(hello_ + "exec sleep 1000", std::chrono::milliseconds(100));
    expect(3343, "hangs");
}

// None of this says anything about the file. Reported as corrupt, the file would be
// offered for removal.
TEST_F(JetChildTest, AReaderThatIsntThereIsNoDamage)
{
    hooks::setJetReader(tools_ / "none");
    expect(429, "missing");
    writeBytes(tools_ / "text", "no program");
    hooks::setJetReader(tools_ / "text");
    expect(429, "not to be run");
    setAppPath(pathText(tools_.path()));
    hooks::setJetReader({});
    expect(429, "missing beside the program");
}

TEST_F(JetChildTest, AReaderThatDoesntGetGoingIsNoDamage)
{
    for (const std::string script : {"exit 127", "kill -SEGV $$", "echo 'H     ' >&3; exit 0"}) {
        readerIs(script);
        expect(429, script);
    }
    readerIs("exec sleep 1000", std::chrono::milliseconds(100));
    expect(429, "hangs at once");
}

TEST_F(JetChildTest, AReaderThatSomeoneEndsIsNoDamage)
{
    for (const std::string signal : {"KILL", "TERM", "INT", "HUP"}) {
        readerIs(hello_ + "kill -" + signal + " $$");
        expect(429, signal);
    }
}

TEST_F(JetChildTest, NoMemoryForAReaderIsNoDamage)
{
    hooks::setFileProbe([](FileOperation, const Path& at) {
        if (at == TOLVEK_JET_READER)
            throw std::system_error(
                std::make_error_code(std::errc::resource_unavailable_try_again));
    });
    expect(429, "no process");
}

TEST_F(JetChildTest, AFileThatTheReaderDoesntKnowIsNoDamage)
{
    readerIs(hello_ + "exit 4");
    expect(3041, "not understood");
}

// Checked from outside at the Hello, which comes before the first read of the file.
TEST_F(JetChildTest, TheReaderIsLockedWhenItLooksAtTheFile)
{
    std::string state;
    runChild(TOLVEK_JET_READER, {}, folder_ / "Old.Mdb", {}, [&](std::string_view) {
        if (state.empty()) state = stateOfChild();
    });
    EXPECT_NE(state.find("NoNewPrivs:\t1"), std::string::npos) << state;
    EXPECT_NE(state.find("Seccomp:\t2"), std::string::npos) << state;
}

TEST_F(JetChildTest, AReaderThatCantReadItsInputIsNoDamage)
{
    readerIs(hello_ + "exit 3");
    expect(75, "input");
}

TEST_F(JetChildTest, ADiskThatCantBeReadIsNoDamage)
{
    readerIs(hello_ + "exit 2");
    bool hasRun = false;
    hooks::setFileProbe([&](FileOperation operation, const Path& at) {
        if (at.filename() == "reader") hasRun = true;
        const bool isRead = operation == FileOperation::Read && at.filename() == "Old.Mdb";
        if (isRead && std::exchange(hasRun, false))
            throw std::system_error(std::make_error_code(std::errc::io_error));
    });
    expect(57, "disk");
}

}
}
