// Whole runs of the program in a process of their own: each is started and interrupted,
// and its folder is checked afterwards.
#include "platform/system/process.h"
#include "support/archive_fixture.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QThread>

#include <map>

namespace tolvek::test {
namespace {

constexpr int kMails = 3000; // as many as the driven program's mail box holds
constexpr int kPatience = 60000;

class ProgramRunTest : public ArchiveFixture {
protected:
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        removeFile(file("Tolvek.Mdb"));
        writeBytes(file("TOLVEK.ini"),
                   "[PostPet Mail Option]\r\nMy Mail Addr=taro@example.jp\r\n"
                   "[Mail Options]\r\n"
                   "Reciev Mail Read Option=1,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0\r\n");
        for (const char* name : {"run", "another run"}) {
            std::filesystem::create_directory(file(name));
            std::filesystem::permissions(file(name), std::filesystem::perms::owner_all);
        }
    }

    // Starts a program of this folder in a session of its own.
    void start(QProcess& process, const QString& program, const QStringList& arguments)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"),
                           QString::fromStdString(file(session).string()));
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(program, arguments);
    }
    void startDriven(QProcess& process, const QStringList& scenario)
    {
        start(process, QStringLiteral(DRIVEN_PROGRAM),
              QStringList(QString::fromStdString(home.string())) + scenario);
    }
    // Runs to its end, which must be successful; returns the output.
    std::string run(const QStringList& scenario)
    {
        QProcess process;
        startDriven(process, scenario);
        EXPECT_TRUE(process.waitForFinished(kPatience)) << "never ended";
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(process.exitCode(), 0);
        return process.readAllStandardOutput().toStdString();
    }
    std::string heard(QProcess& process)
    {
        if (!process.canReadLine()) process.waitForReadyRead(kPatience);
        return process.readLine().trimmed().toStdString();
    }
    static void kill(QProcess& process)
    {
        process.kill();
        process.waitForFinished(kPatience);
    }

    std::map<std::string, std::string> contents() const
    {
        std::map<std::string, std::string> all;
        for (const std::string& name : fileNames(folder.path()))
            all[name] = readBytes(file(name));
        return all;
    }
    void expectRefused() { EXPECT_EQ(run({"start"}), "box Tolvekはすでに実行されています。\n"); }

    // The archive and its previous generation, the settings, the file that the
    // running program locks, the account of a read that wasn't killed, and nothing else.
    void expectAtRest()
    {
        std::vector<std::string> names = fileNames(folder.path());
        std::erase(names, "TolvekRead.log");
        std::sort(names.begin(), names.end());
        EXPECT_EQ(names, (std::vector<std::string>{"TOLVEK.ini", "Tolvek.Mdb", "Tolvek.Mdb.Bak",
                                                   "Tolvek.lock"}));
        EXPECT_NE(readBytes(file("TOLVEK.ini")).find("Ver=331"), std::string::npos);
    }
    void expectEachMailOnce()
    {
        EXPECT_EQ(rows(u"tblTolvek"), kMails);
        std::vector<Text> subjects = column(u"SELECT tblTolvek_Subject FROM tblTolvek");
        std::sort(subjects.begin(), subjects.end());
        EXPECT_EQ(std::unique(subjects.begin(), subjects.end()), subjects.end());
        EXPECT_EQ(rows(u"tblSearch_Addresses"), 51); // fifty senders and the receiver
    }

    std::string session = "run";
    std::filesystem::path home = folder.path();
};

TEST_F(ProgramRunTest, AReadBringsEachMailOnce)
{
    EXPECT_EQ(run({"read"}), "read to the end\n");
    expectAtRest();
    expectEachMailOnce();
}

TEST_F(ProgramRunTest, TheWindowMayBeClosedAtAnyMomentOfARead)
{
    for (const char* moment : {"0", "1", "137", "1000", "2000", "data"}) {
        EXPECT_EQ(run({"close", moment}), "") << "read to its end before " << moment;
        expectAtRest();
    }
    EXPECT_GE(rows(u"tblTolvek"), 137);
    EXPECT_EQ(run({"read"}), "read to the end\n");
    expectAtRest();
    expectEachMailOnce();
}

TEST_F(ProgramRunTest, TheWindowMayBeClosedBehindTheBoxSelection)
{
    EXPECT_EQ(run({"dialog"}), "");
    expectAtRest();
    EXPECT_EQ(rows(u"tblTolvek"), 0);
}

TEST_F(ProgramRunTest, AReadThatWasKilledIsCompletedByTheNext)
{
    for (const char* moment : {"5", "700", "2000"}) {
        QProcess process;
        startDriven(process, {"hold", moment});
        EXPECT_EQ(heard(process), "hold");
        kill(process);
    }
    EXPECT_EQ(run({"read"}), "read to the end\n");
    expectAtRest();
    expectEachMailOnce();
}

TEST_F(ProgramRunTest, ASecondCopyIsToldSoAndNothingIsTouched)
{
    QProcess first;
    startDriven(first, {"idle"});
    ASSERT_EQ(heard(first), "idle");
    const auto before = contents();
    expectRefused();
    EXPECT_EQ(contents(), before);
    EXPECT_EQ(first.state(), QProcess::Running);
    kill(first);
    EXPECT_EQ(run({"start"}), "") << "the lock goes with the process";
}

// The archive is the same one, through whatever sessions and paths it is opened.
TEST_F(ProgramRunTest, ACopyInAnotherSessionIsASecondOneByAnyPath)
{
    QProcess first;
    startDriven(first, {"idle"});
    ASSERT_EQ(heard(first), "idle");
    const auto before = contents();
    session = "another run";
    expectRefused();
    std::filesystem::create_directory_symlink(folder.path(), file("another run") / "link");
    home = file("another run") / "link";
    expectRefused();
    EXPECT_EQ(contents(), before);
    kill(first);
    EXPECT_EQ(run({"start"}), "");
}

TEST_F(ProgramRunTest, ACopyInAnotherFolderWhoseArchiveIsALinkToThisOneIsASecondOne)
{
    QProcess first;
    startDriven(first, {"idle"});
    ASSERT_EQ(heard(first), "idle");
    const auto before = contents();
    session = "another run";
    home = file("another home");
    std::filesystem::create_directory(home);
    std::filesystem::create_symlink("../Tolvek.Mdb", home / "Tolvek.Mdb");
    expectRefused();
    EXPECT_EQ(contents(), before);
    kill(first);
    home = folder.path();
    EXPECT_EQ(run({"start"}), "");
}

TEST_F(ProgramRunTest, TheProgramItselfStartsFromItsFolderAndMakesItsArchive)
{
    std::filesystem::create_symlink(TOLVEK_PROGRAM, file("Tolvek"));
    QProcess process;
    start(process, QString::fromStdString(file("Tolvek").string()), {});
    QElapsedTimer waited;
    for (waited.start(); !exists("Tolvek.Mdb.Bak") && waited.elapsed() < kPatience;)
        process.waitForFinished(20);
    EXPECT_EQ(process.state(), QProcess::Running);
    kill(process);
    EXPECT_EQ(rows(u"tblTolvek"), 0);
    EXPECT_EQ(rows(u"tblFriend"), 0);
}

}
}
