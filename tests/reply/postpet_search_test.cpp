#include "app/settings.h"
#include "app/state.h"
#include "platform/system/test_hooks.h"
#include "reply/postpet_search.h"
#include "support/archive_fixture.h"
#include "support/lasting_program.h"
#include "window/frm_tolvek.h"

namespace tolvek::test {
namespace {

namespace fs = std::filesystem;

class PostPetSearchTest : public ArchiveFixture {
protected:
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        home = fs::canonical(folder.path()) / "PostPet";
        fs::create_directory(home);
        gPostPetDir = pathText(home);
        gPostPetPid = 4711; // left by an earlier press
    }
    void TearDown() override
    {
        hooks::setProcessLister({});
        gPostPetPid = 0;
        gPostPetDir.clear();
        ArchiveFixture::TearDown();
    }
    std::int32_t found()
    {
        findPostPet(caller);
        return gPostPetPid;
    }
    // A script runs under its interpreter's name: its start can be seen, but it is
    // never found in the process list.
    void givenProgram(const std::string& name, const std::string& lines) const
    {
        writeBytes(home / name, "#!/bin/sh\n" + lines);
        fs::permissions(home / name, fs::perms::owner_all);
    }

    fs::path home;
    frmTolvek caller;
};

TEST_F(PostPetSearchTest, NothingRunsAndTheLastIdIsForgotten)
{
    EXPECT_EQ(found(), 0);
}

TEST_F(PostPetSearchTest, ARunningPostPetIsFoundByItsWholePath)
{
    const LastingProgram postPet(home / "PostPet20.exe");
    EXPECT_EQ(found(), postPet.id());
}

TEST_F(PostPetSearchTest, ACopyInAnotherFolderDoesNotCount)
{
    const LastingProgram elsewhere(home / "old" / "PostPet20.exe");
    EXPECT_EQ(found(), 0);
    const LastingProgram here(home / "PostPet20.exe");
    const LastingProgram later(home / "new" / "PostPet20.exe");
    EXPECT_EQ(found(), here.id());
}

TEST_F(PostPetSearchTest, AnotherProgramOfTheFolderDoesNotCount)
{
    const LastingProgram longer(home / "NotPostPet20.exe");
    const LastingProgram other(home / "PostPet.exe");
    EXPECT_EQ(found(), 0);
}

TEST_F(PostPetSearchTest, OfTwoThatRunTheLastOneToldCounts)
{
    const LastingProgram one(home / "PostPet20.exe");
    const LastingProgram two(home / "PostPet20.exe");
    const std::vector<std::int32_t> reported = processesOf(home / "PostPet20.exe");
    ASSERT_EQ(reported.size(), 2u);
    EXPECT_EQ(found(), reported.back());
}

TEST_F(PostPetSearchTest, TheFolderMayBeToldInAnotherWay)
{
    const LastingProgram postPet(home / "PostPet20.exe");
    fs::create_directory_symlink(home, file("link"));
    const fs::path ways[] = {
        home / "",                                      // a separator at the end
        home / "." / ".." / "PostPet",                  // dots
        home.parent_path() / "pOSTpET",                 // another case
        file("link"),                                   // a link
        home.parent_path() / "LINK" / ".." / "postpet", // all of it
    };
    for (const fs::path& way : ways) {
        gPostPetDir = pathText(way);
        EXPECT_EQ(found(), postPet.id()) << way;
    }
}

TEST_F(PostPetSearchTest, TheProgramFileMayBeWrittenInAnotherCase)
{
    const LastingProgram postPet(home / "POSTPET20.EXE");
    EXPECT_EQ(found(), postPet.id());
}

TEST_F(PostPetSearchTest, AFolderWithJapaneseLettersIsFound)
{
    const fs::path japanese = home / "ポストペット①㈱ﾓﾓ";
    const LastingProgram postPet(japanese / "PostPet20.exe");
    gPostPetDir = pathText(japanese);
    EXPECT_EQ(found(), postPet.id());
}

// The name on an emulator's command line: spelt as it was started.
TEST_F(PostPetSearchTest, AnEmulatedProgramIsFoundThroughALinkOnEitherSide)
{
    writeBytes(home / "PostPet20.exe", "");
    fs::create_directory_symlink(home, file("link"));
    for (const fs::path& reported : {home, file("link")})
        for (const fs::path& known : {home, file("link")}) {
            hooks::setProcessLister([&] {
                return std::vector<RunningProgram>{{1, "/usr/bin/PostPet20.exe"},
                                                   {4712, known / "PostPet20.exe"},
                                                   {4713, "/opt/x/PostPet20.exe"}};
            });
            gPostPetDir = pathText(reported);
            EXPECT_EQ(found(), 4712) << reported << known;
        }
}

// Handles are numbered consecutively.
TEST_F(PostPetSearchTest, TheSnapshotIsClosedAfterTheSearch)
{
    const auto take = [] { return CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0); };
    const SnapshotHandle before = take();
    found();
    const SnapshotHandle after = take();
    ASSERT_EQ(after, before + 2);
    PROCESSENTRY32 entry;
    entry.dwSize = kProcessEntrySize;
    EXPECT_TRUE(Process32First(before, entry));
    EXPECT_FALSE(Process32First(before + 1, entry)) << "the search's own";
    CloseHandle(before);
    CloseHandle(after);
}

TEST_F(PostPetSearchTest, OneThatHasEndedIsNoLongerFound)
{
    {
        const LastingProgram postPet(home / "PostPet20.exe");
        EXPECT_EQ(found(), postPet.id());
    }
    EXPECT_TRUE(comesTrue([&] { return found() == 0; }));
}

TEST_F(PostPetSearchTest, WithoutAListOfProcessesTheProgramEndsWithItsFormUnloaded)
{
    caller.Load();
    boxes.expectAndLook(u"ﾌﾟﾛｾｽｴﾝﾄﾘの取得に失敗しました", MsgAnswer::Ok,
                        [this] { EXPECT_TRUE(caller.Loaded()); });
    hooks::setProcessLister([]() -> std::vector<RunningProgram> {
        throw std::system_error(std::make_error_code(std::errc::permission_denied));
    });
    EXPECT_THROW(findPostPet(caller), ProgramEnd);
    EXPECT_FALSE(caller.Loaded());
    EXPECT_EQ(gPostPetPid, 0);
}

TEST_F(PostPetSearchTest, AStartKeepsTheIdOfTheStartedProcess)
{
    givenProgram("PostPet20.exe", "echo $$ > \"$0.id\"\n");
    startPostPet();
    const fs::path note = home / "PostPet20.exe.id";
    ASSERT_TRUE(comesTrue([&] { return readBytes(note).ends_with('\n'); }));
    EXPECT_EQ(gPostPetPid, std::stoi(readBytes(note)));
}

TEST_F(PostPetSearchTest, AStartFindsTheProgramInAnyCase)
{
    givenProgram("postpet20.EXE", "");
    gPostPetDir = pathText(home.parent_path() / "POSTPET");
    startPostPet();
    EXPECT_NE(gPostPetPid, 4711);
}

TEST_F(PostPetSearchTest, AProgramThatIsNotThereIsAFailureOfItsCaller)
{
    try {
        startPostPet();
        FAIL() << "nothing could be started";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), 53);
    }
}

}
}
