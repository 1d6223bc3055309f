#include "letters/read_library.h"

#include "letters_fixture.h"
#include "support/other_program.h"

#include "platform/dao/alone.h"

namespace tolvek::test {
namespace {

class ReadLibraryTest : public LettersFixture {
protected:
    ListArchives all() const
    {
        return [this] { return archivesIn(folder.path()); };
    }
};

const StillWaiting kNever = [](const ArchiveFile&) { return false; };

TEST_F(ReadLibraryTest, ReadsWhatItCanAndSaysWhatItCannot)
{
    store(with(u"a", u"x"));
    writeBytes(folder / "Tolvek_20010101.Mdb", std::string(5000, 'x'));
    const auto library = readLibrary(all(), kNever);
    EXPECT_EQ(subjectsOf(*library), Lines{"a"});
    EXPECT_EQ(library->sources()[0].status.state, ReadState::Read);
    EXPECT_EQ(library->sources()[1].status.error, 3343);
}

TEST_F(ReadLibraryTest, WaitsForAFileThatIsBeingWritten)
{
    store(with(u"a", u"x"));
    Signal locked, looked;
    ChildProcess other([&] {
        const Alone alone(gDbPath);
        locked.send();
        looked.wait();
        return 0;
    });
    locked.wait();
    EXPECT_EQ(readLibrary(all(), kNever)->sources()[0].status.error, 3356);
    const auto library = readLibrary(all(), [&](const ArchiveFile&) {
        looked.send();
        return other.exitCode() == 0;
    });
    EXPECT_EQ(subjectsOf(*library), Lines{"a"});
}

// A backup moves the mails between two readings of files.
TEST_F(ReadLibraryTest, ReadsAgainWhatAnotherProgramMovesMeanwhile)
{
    const Text backup = archive("Tolvek_20010101.Mdb");
    store(with(u"a", u"x"), backup);
    removeFile(folder / "Tolvek_20010101.Mdb");
    store(with(u"a", u"x"));
    bool isMoved = false;
    const auto library = readLibrary(
        [&] {
            auto files = archivesIn(folder.path());
            if (!std::exchange(isMoved, true)) {
                std::filesystem::copy_file(live(), folder / "Tolvek_20010101.Mdb");
                execute(Statement{u"DELETE FROM tblTolvek"});
            }
            return files;
        },
        kNever);
    EXPECT_EQ(subjectsOf(*library), Lines{"a"});
}

}
}
