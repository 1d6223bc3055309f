#include "letters/desk.h"

#include "letters/letter_reader.h"
#include "letters_fixture.h"
#include "platform/dao/alone.h"
#include "platform/runtime/numbers.h"
#include "store/db_compress.h"
#include "support/other_program.h"

#include <condition_variable>
#include <mutex>

namespace tolvek::test {
namespace {

// Collects a desk's events and waits for the one that a test is about.
class Events {
public:
    DeskEvents listeners()
    {
        return {[this](auto library) { keep([&] { library_ = std::move(library); }); },
                [this](auto answer) { keep([&] { answer_ = std::move(answer); }); }};
    }
    std::shared_ptr<const Library> libraryWith(const std::function<bool(const Library&)>& isWanted)
    {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [&] { return library_ && isWanted(*library_); });
        return library_;
    }
    std::shared_ptr<const Library> inState(ReadState state)
    {
        return libraryWith([=](const Library& library) {
            return std::all_of(library.sources().begin(), library.sources().end(),
                               [=](const auto& source) { return source.status.state == state; }) &&
                   !library.sources().empty();
        });
    }
    std::shared_ptr<const Answer> answerTo(std::uint64_t generation)
    {
        std::unique_lock lock(mutex_);
        changed_.wait(
            lock, [&] { return answer_ && answer_->generation == generation && answer_->allRead; });
        return answer_;
    }

private:
    template <class Keep> void keep(const Keep& work)
    {
        {
            const std::lock_guard lock(mutex_);
            work();
        }
        changed_.notify_all();
    }
    std::mutex mutex_;
    std::condition_variable changed_;
    std::shared_ptr<const Library> library_;
    std::shared_ptr<const Answer> answer_;
};

class DeskTest : public LettersFixture {
protected:
    void TearDown() override
    {
        desk_.reset();
        LettersFixture::TearDown();
    }
    Desk& desk()
    {
        if (!desk_) desk_ = std::make_unique<Desk>(events_.listeners(), settings_);
        return *desk_;
    }
    static Request request(TextView typed) { return {parseQuery(typed), {}}; }
    std::size_t foundFor(TextView typed)
    {
        return events_.answerTo(desk().find(request(typed)))->results.letters.size();
    }

    Events events_;
    DeskSettings settings_{{}, 256ull << 20, 1};
    std::unique_ptr<Desk> desk_;
};

TEST_F(DeskTest, ReadsAndAnswers)
{
    store(with(u"旅行", u"京都"));
    store(with(u"花見", u"桜", u"20010101"));
    desk().show(archivesIn(folder.path()));
    EXPECT_EQ(foundFor(u"京都"), 1u);
    EXPECT_EQ(foundFor(u""), 2u);
    EXPECT_EQ(foundFor(u"桜 京都"), 0u);
}

TEST_F(DeskTest, AnswersAgainWhenMoreHasBeenRead)
{
    store(with(u"旅行", u"京都"));
    const auto generation = desk().find(request(u"京都"));
    desk().show(archivesIn(folder.path()));
    events_.inState(ReadState::Read);
    EXPECT_EQ(events_.answerTo(generation)->results.letters.size(), 1u);
}

TEST_F(DeskTest, SaysWhatCannotBeRead)
{
    writeBytes(folder / "Bad.Mdb", std::string(5000, 'x'));
    desk().show({{folder / "Bad.Mdb", ArchiveKind::Chosen}});
    const auto library = events_.inState(ReadState::Failed);
    EXPECT_EQ(library->sources()[0].status.error, 3343);
    EXPECT_FALSE(library->sources()[0].status.description.empty());
}

TEST_F(DeskTest, ShowsWhatHasChanged)
{
    store(with(u"a", u"x"));
    desk().show(archivesIn(folder.path()));
    ASSERT_EQ(foundFor(u""), 1u);
    store(with(u"b", u"x", u"20010101"));
    desk().refresh();
    EXPECT_EQ(events_.libraryWith([](const Library& all) { return all.size() == 2; })->size(), 2u);
}

TEST_F(DeskTest, AFileThatIsNoLongerWantedGoes)
{
    const Text backup = archive("Tolvek_20010101.Mdb");
    store(with(u"a", u"x"));
    store(with(u"b", u"x"), backup);
    desk().show(archivesIn(folder.path()));
    ASSERT_EQ(foundFor(u""), 2u);
    desk().show({{live(), ArchiveKind::Live}});
    EXPECT_EQ(events_.libraryWith([](const Library& all) { return all.size() == 1; })->size(), 1u);
}

TEST_F(DeskTest, WaitsWhileAnotherProgramWritesAndReadsThen)
{
    store(with(u"a", u"x"));
    Signal writing, waiting;
    ChildProcess writer([&] {
        const DBEngine::Session session;
        store(with(u"b", u"x", u"20010101"));
        const Alone alone(gDbPath);
        writing.send();
        waiting.wait();
        return 0;
    });
    writing.wait();
    desk().show(archivesIn(folder.path()));
    EXPECT_EQ(events_.inState(ReadState::Waiting)->size(), 0u);
    waiting.send();
    EXPECT_EQ(writer.exitCode(), 0);
    EXPECT_EQ(events_.inState(ReadState::Read)->size(), 2u);
}

// The main program's compaction and backup need the file for themselves.
TEST_F(DeskTest, LeavesTheArchiveFreeOnceItIsRead)
{
    store(with(u"a", u"x"));
    OtherProgram other([&] {
        const Alone alone(gDbPath);
        DBEngine::CompactDatabase(gDbPath, gDbPath + u".New");
        alone.confirm();
        removeFile(folder / "Tolvek.Mdb.New");
        return 0;
    });
    desk().show(archivesIn(folder.path()));
    ASSERT_EQ(foundFor(u"a"), 1u);
    EXPECT_EQ(other.run(), 0);
    EXPECT_EQ(foundFor(u"x"), 1u) << "what was read stays";
}

// It reads and reads; the main program compacts, stores and empties the archive as ever.
TEST_F(DeskTest, TheProgramWorksBesideAReader)
{
    for (int number = 0; number < 200; ++number)
        store(with(u"a" + decimal(number), Text(2000, u'本'), decimal(20000101 + number)));
    ChildProcess reader([&]() -> int {
        for (;;)
            try {
                readLetterFile(live());
            } catch (const RuntimeError& error) {
                if (error.number() != 3356 && error.number() != 3024) return error.number();
            }
    });
    for (int round = 1; round <= 5; ++round) {
        dbCompress(gDbPath);
        store(with(u"new" + decimal(round), u"", decimal(20010101 + round)));
        EXPECT_EQ(rows(u"tblTolvek"), 200 + round);
    }
    execute(Statement{u"DELETE FROM tblTolvek"});
    EXPECT_EQ(rows(u"tblTolvek"), 0);
    EXPECT_EQ(reader.isRunning(), true) << "it met an error";
}

TEST_F(DeskTest, LargeArchivesUseTheCacheFolder)
{
    store(with(u"a", u"x"));
    settings_.cacheFolder = folder / "cache";
    settings_.mostInMemory = 0;
    desk().show(archivesIn(folder.path()));
    EXPECT_EQ(foundFor(u"x"), 1u);
    EXPECT_EQ(fileNames(folder / "cache").size(), 1u);
}

TEST_F(DeskTest, MayEndAtAnyMoment)
{
    store(with(u"a", u"x"));
    desk().find(request(u"x"));
    desk().show(archivesIn(folder.path()));
    desk_.reset();
}

}
}
