#include "letters/command_line.h"

#include "letters_fixture.h"
#include "support/other_program.h"

#include "platform/dao/alone.h"

#include <sstream>

namespace tolvek::test {
namespace {

class CommandLineTest : public LettersFixture {
protected:
    void SetUp() override
    {
        LettersFixture::SetUp();
        store(with(u"旅行", u"京都へ\r\n", u"20010401"));
        Mail sent = mail(u"taro@example.jp", u"jiro@example.jp", u"返事", u"20020402");
        sent.SndRcvFlag = true;
        store(sent);
    }
    int run(const Lines& arguments)
    {
        out_.str({});
        errors_.str({});
        return runCommandLine(arguments, out_, errors_);
    }
    std::ostringstream out_, errors_;
};

TEST_F(CommandLineTest, PrintsWhatItFindsBesideTheProgram)
{
    EXPECT_EQ(run({"--find", "京都"}), 0);
    EXPECT_EQ(out_.str(), "2001/04/01 10:11:12 <- 花子  旅行  | 京都へ\n");
    EXPECT_EQ(errors_.str(), "");
}

TEST_F(CommandLineTest, AnEmptyQueryFindsAllNewestFirst)
{
    EXPECT_EQ(run({"--find", ""}), 0);
    EXPECT_LT(out_.str().find("返事"), out_.str().find("旅行"));
    EXPECT_EQ(run({"--find", "", "--sent"}), 0);
    EXPECT_EQ(out_.str().find("旅行"), std::string::npos);
    EXPECT_EQ(run({"--find", "", "--received"}), 0);
    EXPECT_EQ(out_.str().find("返事"), std::string::npos);
}

TEST_F(CommandLineTest, ExitCodesTellWhatHappened)
{
    EXPECT_EQ(run({"--find", "ほにゃらら"}), 1);
    EXPECT_EQ(run({}), 2);
    EXPECT_EQ(run({"--find"}), 2);
    EXPECT_EQ(run({"--find", "x", "--colour"}), 2);
    EXPECT_EQ(run({"--find", "x", "--wait", "long"}), 2);
    EXPECT_EQ(run({"--export", "pdf", "x", "--find", ""}), 2);
    EXPECT_NE(errors_.str().find("--find WORDS"), std::string::npos) << "the help follows";
    EXPECT_EQ(run({"--find", "京都", "--in", (folder / "none").string()}), 3);
    EXPECT_EQ(run({"--help"}), 0);
}

TEST_F(CommandLineTest, AFileThatCannotBeReadIsNamedAndTheOthersAreSearched)
{
    writeBytes(folder / "Bad.Mdb", std::string(5000, 'x'));
    EXPECT_EQ(run({"--find", "京都"}), 3);
    EXPECT_NE(out_.str().find("旅行"), std::string::npos);
    EXPECT_TRUE(errors_.str().starts_with("Bad.Mdb: 3343 ")) << errors_.str();
}

TEST_F(CommandLineTest, JsonIsAnArrayAlsoWithoutLetters)
{
    EXPECT_EQ(run({"--find", "京都", "--json"}), 0);
    EXPECT_TRUE(out_.str().starts_with("[\n{\"id\":"));
    EXPECT_TRUE(out_.str().ends_with("}\n]\n"));
    EXPECT_EQ(run({"--find", "ほにゃらら", "--json"}), 1);
    EXPECT_EQ(out_.str(), "[\n]\n");
}

TEST_F(CommandLineTest, SeveralWordsAndAnExactQuery)
{
    EXPECT_EQ(run({"--find", "京都", "--find", "hanako"}), 0);
    EXPECT_EQ(run({"--find", "HANAKO", "--exact"}), 1);
}

TEST_F(CommandLineTest, ChosenFilesAndCopiesAreSearched)
{
    std::filesystem::create_directory(folder / "old");
    std::filesystem::copy_file(live(), folder / "old" / "Tolvek.Mdb.Bak");
    EXPECT_EQ(run({"--find", "京都", "--in", (folder / "old").string()}), 3) << "no archive there";
    EXPECT_EQ(run({"--find", "京都", "--copies", "--in", (folder / "old").string()}), 0);
    EXPECT_EQ(run({"--find", "京都", "--in", (folder / "old" / "Tolvek.Mdb.Bak").string()}), 0);
}

TEST_F(CommandLineTest, ExportsOldestFirst)
{
    const std::string target = (folder / "all.txt").string();
    EXPECT_EQ(run({"--export", "text", target, "--find", ""}), 0);
    EXPECT_EQ(out_.str(), "2 letters: " + target + "\n");
    const std::string text = readBytes(target);
    EXPECT_LT(text.find("旅行"), text.find("返事"));
}

TEST_F(CommandLineTest, WithoutLettersNothingIsExported)
{
    EXPECT_EQ(run({"--export", "mbox", (folder / "x.mbox").string(), "--find", "ほにゃらら"}), 1);
    EXPECT_FALSE(exists("x.mbox"));
}

TEST_F(CommandLineTest, AFailedExportIsReported)
{
    EXPECT_EQ(run({"--export", "mbox", (folder / "no" / "x.mbox").string(), "--find", ""}), 3);
    EXPECT_FALSE(errors_.str().empty());
}

TEST_F(CommandLineTest, SaysThatItWaitsAndGivesUp)
{
    Signal locked, looked;
    ChildProcess other([&] {
        const Alone alone(gDbPath);
        locked.send();
        looked.wait();
        return 0;
    });
    locked.wait();
    EXPECT_EQ(run({"--find", "京都", "--wait", "0"}), 3);
    EXPECT_TRUE(errors_.str().starts_with("Tolvek.Mdb: is being written, waiting\n"));
    looked.send();
    EXPECT_EQ(other.exitCode(), 0);
}

TEST_F(CommandLineTest, OptionsMeanNoWindow)
{
    EXPECT_TRUE(wantsCommandLine({"--find", "x"}));
    EXPECT_TRUE(wantsCommandLine({"Tolvek.Mdb", "--help"}));
    EXPECT_FALSE(wantsCommandLine({}));
    EXPECT_FALSE(wantsCommandLine({"/some/folder"}));
}

}
}
