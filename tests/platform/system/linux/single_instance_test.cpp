#include "platform/system/files.h"
#include "platform/system/process.h"
#include "support/child_process.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>
#include <optional>

namespace tolvek::test {

namespace fs = std::filesystem;

// Restores an environment variable after the test.
class KeptVariable {
public:
    explicit KeptVariable(const char* name) : name_(name)
    {
        if (const char* value = std::getenv(name)) value_ = value;
    }
    ~KeptVariable()
    {
        if (value_)
            setenv(name_, value_->c_str(), 1);
        else
            unsetenv(name_);
    }
    KeptVariable(const KeptVariable&) = delete;
    KeptVariable& operator=(const KeptVariable&) = delete;

private:
    const char* name_;
    std::optional<std::string> value_;
};

class SingleInstanceTest : public testing::Test {
protected:
    SingleInstanceTest()
    {
        for (const char* name : {"run", "other", "home", "temp"})
            makeFolder(folder / name);
        useSession("run");
        setenv("TMPDIR", (folder / "temp").c_str(), 1);
    }
    static void makeFolder(const fs::path& path)
    {
        fs::create_directory(path);
        fs::permissions(path, fs::perms::owner_all);
    }
    void useSession(const std::string& name)
    {
        setenv("XDG_RUNTIME_DIR", (folder / name).c_str(), 1);
    }
    bool isFirst(const std::string& home) const
    {
        return SingleInstance("Tolvek", folder / home).isFirst();
    }

    TempFolder folder;
    KeptVariable runFolder{"XDG_RUNTIME_DIR"};
    KeptVariable tempFolder{"TMPDIR"};
};

TEST_F(SingleInstanceTest, ASecondProcessSeesTheFirst)
{
    Signal ready;
    ChildProcess first([&] {
        const SingleInstance instance("Tolvek", folder / "home");
        ready.send(instance.isFirst() ? 'f' : 's');
        return Signal().wait();
    });
    EXPECT_EQ(ready.wait(), 'f');
    EXPECT_FALSE(isFirst("home"));
    EXPECT_TRUE(SingleInstance("Another", folder / "home").isFirst());
}

TEST_F(SingleInstanceTest, AnotherSessionsCopyInTheSameFolderIsSeenByAnyPath)
{
    fs::create_directory_symlink("home", folder / "link");
    const SingleInstance instance("Tolvek", folder / "home");
    ASSERT_TRUE(instance.isFirst());
    useSession("other");
    EXPECT_FALSE(isFirst("home"));
    EXPECT_FALSE(isFirst("link"));
    unsetenv("XDG_RUNTIME_DIR");
    EXPECT_FALSE(isFirst("home"));
}

TEST_F(SingleInstanceTest, OfOneSessionTheSecondIsSeenInAnotherFolderToo)
{
    const SingleInstance instance("Tolvek", folder / "home");
    EXPECT_FALSE(isFirst("temp"));
    useSession("other");
    EXPECT_TRUE(isFirst("temp"));
}

TEST_F(SingleInstanceTest, TheLocksGoWithAKilledProcess)
{
    Signal ready;
    ChildProcess first([&] {
        const SingleInstance instance("Tolvek", folder / "home");
        ready.send();
        return Signal().wait();
    });
    ready.wait();
    first.kill();
    EXPECT_TRUE(isFirst("home"));
}

TEST_F(SingleInstanceTest, TheLocksGoWithTheObject)
{
    EXPECT_TRUE(isFirst("home"));
    EXPECT_TRUE(isFirst("home"));
}

TEST_F(SingleInstanceTest, TheSessionsFolderMayBeTheProgramsOwn)
{
    useSession("home");
    EXPECT_TRUE(isFirst("home"));
}

// Everybody may write to the temporary folder: whoever comes first there could keep
// others out.
TEST_F(SingleInstanceTest, WithoutASessionsFolderOnlyTheProgramsOwnIsUsed)
{
    for (const char* value : {"", "/no/such/folder"}) {
        setenv("XDG_RUNTIME_DIR", value, 1);
        const SingleInstance instance("Tolvek", folder / "home");
        EXPECT_TRUE(instance.isFirst());
        EXPECT_FALSE(isFirst("home"));
        EXPECT_TRUE(entryNames(folder / "temp").empty());
    }
}

TEST_F(SingleInstanceTest, ASessionsFolderInWhichOthersMayWriteIsNotTrusted)
{
    for (const auto others : {fs::perms::others_write, fs::perms::group_write}) {
        fs::permissions(folder / "run", fs::perms::owner_all | others);
        EXPECT_TRUE(isFirst("home"));
        EXPECT_TRUE(entryNames(folder / "run").empty());
    }
    fs::create_directory_symlink("other", folder / "led");
    useSession("led");
    EXPECT_TRUE(isFirst("home"));
    EXPECT_TRUE(entryNames(folder / "other").empty());
}

TEST_F(SingleInstanceTest, ASeparatorInTheNameStaysInTheFolders)
{
    const SingleInstance instance("a/../b", folder / "home");
    EXPECT_TRUE(fileExists(folder / "run" / "a_.._b.lock"));
    EXPECT_TRUE(fileExists(folder / "home" / "a_.._b.lock"));
}

TEST_F(SingleInstanceTest, FoldersThatLinkToOneArchiveExcludeEachOther)
{
    const fs::path archive = folder / "home" / "Tolvek.Mdb";
    const SingleInstance first("Tolvek", folder / "temp", archive);
    ASSERT_TRUE(first.isFirst());
    useSession("other");
    EXPECT_FALSE(SingleInstance("Tolvek", folder / "other", archive).isFirst());
    EXPECT_FALSE(SingleInstance("Tolvek", folder / "home", archive).isFirst()) << "its own folder";
    EXPECT_TRUE(SingleInstance("Tolvek", folder / "other", folder / "home" / "Mine.Mdb").isFirst());
}

TEST_F(SingleInstanceTest, AnArchiveBesideTheProgramNeedsNoFurtherLock)
{
    EXPECT_TRUE(
        SingleInstance("Tolvek", folder / "home", folder / "home" / "Tolvek.Mdb").isFirst());
    EXPECT_EQ(entryNames(folder / "home"), std::vector<std::string>{"Tolvek.lock"});
    useSession("home");
    EXPECT_TRUE(
        SingleInstance("Tolvek", folder / "temp", folder / "home" / "Tolvek.Mdb").isFirst());
}

}
