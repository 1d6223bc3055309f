#include "platform/dao/row_reader.h"

#include "dao_fixture.h"
#include "jet_fixture.h"
#include "platform/dao/test_hooks.h"
#include "platform/system/test_hooks.h"

#include "platform/dao/alone.h"
#include "support/other_program.h"

#include <csignal>

namespace tolvek::test {
namespace {

class RowReaderTest : public DaoTest {
protected:
    void TearDown() override { hooks::setPatience({}); }

    std::filesystem::path file() const { return folder_ / "Test.Mdb"; }
    void fill(int mails)
    {
        Database database = opened();
        inTransaction([&] {
            for (int number = 1; number <= mails; ++number)
                addMail(database, u"2000", number, u"s" + decimal(number));
        });
        database.Close();
    }
    static std::vector<Text> subjectsOf(RowReader& reader, const RowReader::Pause& pause = {})
    {
        std::vector<Text> subjects;
        reader.eachRow(
            u"tblMail", {u"Mail_Subject"},
            [&](const Query& row) { subjects.push_back(row.text(1)); }, pause);
        return subjects;
    }
    std::vector<Text> subjects() const
    {
        RowReader reader(file());
        return subjectsOf(reader);
    }
    static int storedBy(const std::function<void()>& work)
    {
        try {
            work();
            return 0;
        } catch (const RuntimeError& error) {
            return error.number();
        }
    }
};

TEST_F(RowReaderTest, GivesAllRowsInOrder)
{
    fill(3);
    EXPECT_EQ(subjects(), (std::vector<Text>{u"s1", u"s2", u"s3"}));
    RowReader reader(file());
    EXPECT_TRUE(reader.hasColumn(u"tblMail", u"Mail_Subject"));
    EXPECT_FALSE(reader.hasColumn(u"tblMail", u"Mail_Colour"));
}

TEST_F(RowReaderTest, ReportsAFileThatIsMissingOrNoDatabase)
{
    EXPECT_EQ(errorOf([&] { RowReader reader(folder_ / "None.Mdb"); }), 3024);
    writeBytes(folder_ / "Text.Mdb", std::string(5000, 'x'));
    EXPECT_EQ(errorOf([&] { RowReader reader(folder_ / "Text.Mdb"); }), 3343);
}

TEST_F(RowReaderTest, LeavesAnotherProgramFreeToTakeTheFileWhileItIsIdle)
{
    OtherProgram alone([&] { return storedBy([&] { const Alone lock(path()); }); });
    fill(3);
    RowReader reader(file());
    subjectsOf(reader);
    EXPECT_EQ(alone.run(), 0);
}

TEST_F(RowReaderTest, LetsAWriterInBetweenTwoStretchesAndThenSaysThatTheFileHasChanged)
{
    OtherProgram writer([&] {
        return storedBy([&] {
            Database database = opened();
            addMail(database, u"2001", 1);
            database.Close();
        });
    });
    fill(3);
    RowReader reader(file());
    reader.setStretch(std::chrono::milliseconds(0));
    int written = -1;
    const auto writeOnce = [&] {
        if (written == -1) written = writer.run();
        return true;
    };
    EXPECT_EQ(errorOf([&] { subjectsOf(reader, writeOnce); }), 3356);
    EXPECT_EQ(written, 0);
    EXPECT_EQ(subjects().size(), 4u);
}

TEST_F(RowReaderTest, EndsWhereThePauseSaysSo)
{
    fill(3);
    RowReader reader(file());
    reader.setStretch(std::chrono::milliseconds(0));
    EXPECT_EQ(subjectsOf(reader, [] { return false; }), std::vector<Text>{u"s1"});
}

TEST_F(RowReaderTest, RefusesAFileThatAnotherProgramIsWriting)
{
    fill(1);
    Signal writing, read;
    ChildProcess writer([&] {
        const DBEngine::Session session;
        Database database = opened();
        addMail(database, u"2001", 1);
        writing.send();
        read.wait();
        database.Close();
        return 0;
    });
    writing.wait();
    const std::string before = bytes();
    EXPECT_EQ(errorOf([&] { RowReader reader(file()); }), 3356);
    EXPECT_EQ(bytes(), before);
    EXPECT_EQ(files(), (Names{"Test.Mdb", "Test.Mdb-wal"}));
    read.send();
    EXPECT_EQ(writer.exitCode(), 0);
    EXPECT_EQ(subjects().size(), 2u);
}

TEST_F(RowReaderTest, RefusesAFileThatAnotherProgramHasLocked)
{
    Signal locked, read;
    ChildProcess holder([&] {
        const Alone lock(path());
        locked.send();
        read.wait();
        return 0;
    });
    locked.wait();
    EXPECT_EQ(errorOf([&] { RowReader reader(file()); }), 3356);
    read.send();
    EXPECT_EQ(holder.exitCode(), 0);
    EXPECT_EQ(errorOf([&] { RowReader reader(file()); }), 0);
}

// A killed program's log or journal belongs to the main program, which takes it in.
TEST_F(RowReaderTest, ReadsWhatAKilledProgramCommittedAndLeavesItsLog)
{
    ASSERT_EQ(inChild([&]() -> int {
                  const DBEngine::Session session;
                  Database database = opened();
                  addMail(database, u"2000", 1);
                  leaveProcess(kGotThrough); // as a killed program ends, without its log taken in
              }),
              kGotThrough);
    const Names names{"Test.Mdb", "Test.Mdb-wal"};
    ASSERT_EQ(files(), names);
    const std::string before = bytes(), log = readBytes(folder_ / "Test.Mdb-wal");
    EXPECT_EQ(subjects().size(), 1u);
    EXPECT_EQ(files(), names);
    EXPECT_EQ(bytes(), before);
    EXPECT_EQ(readBytes(folder_ / "Test.Mdb-wal"), log);
}

TEST_F(RowReaderTest, DoesNotPlayInOrRemoveALogOfAnotherFile)
{
    fill(2);
    writeBytes(folder_ / "Test.Mdb-wal", "the log of another file");
    EXPECT_EQ(subjects().size(), 2u);
    EXPECT_EQ(readBytes(folder_ / "Test.Mdb-wal"), "the log of another file");
}

TEST_F(RowReaderTest, WritesNothing)
{
    fill(2);
    RowReader reader(file());
    std::vector<std::filesystem::path> touched;
    hooks::setFileProbe([&](FileOperation operation, const Path& name) {
        if (operation != FileOperation::Read && operation != FileOperation::Open)
            touched.push_back(name);
    });
    subjectsOf(reader);
    RowReader again(file());
    EXPECT_EQ(touched, std::vector<std::filesystem::path>());
    hooks::setFileProbe({});
}

using JetRowReaderTest = JetTest;

TEST_F(JetRowReaderTest, ReadsAJetFileFromAPrivateCopy)
{
    given("current_jet4");
    RowReader reader(folder_ / "Old.Mdb");
    int mails = 0;
    reader.eachRow(u"tblTolvek", {u"tblTolvek_Subject"}, [&](const Query&) { ++mails; });
    EXPECT_EQ(mails, 56);
    EXPECT_TRUE(isUnchanged());
    EXPECT_EQ(files(), Names{"Old.Mdb"});
}

}
}
