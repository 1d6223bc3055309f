#include "platform/system/child_process.h"
#include "platform/system/files.h"
#include "platform/system/process.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>
#include <optional>

namespace tolvek::test {

namespace fs = std::filesystem;

// The environment as it was before the test.
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
        fs::create_directory(folder / "run");
        fs::create_directory(folder / "temp");
        setenv("XDG_RUNTIME_DIR", (folder / "run").c_str(), 1);
        setenv("TMPDIR", (folder / "temp").c_str(), 1);
    }

    fs::path userFolder() const
    {
        return folder / "temp" / ("tolvek-" + std::to_string(geteuid()));
    }

    TempFolder folder;
    KeptVariable runFolder{"XDG_RUNTIME_DIR"};
    KeptVariable tempFolder{"TMPDIR"};
};

TEST_F(SingleInstanceTest, ASecondProcessSeesTheFirst)
{
    Signal ready;
    ChildProcess first([&] {
        const SingleInstance instance("Tolvek");
        ready.send(instance.isFirst() ? 'f' : 's');
        return Signal().wait();
    });
    EXPECT_EQ(ready.wait(), 'f');
    EXPECT_FALSE(SingleInstance("Tolvek").isFirst());
    EXPECT_TRUE(SingleInstance("Another").isFirst());
}

TEST_F(SingleInstanceTest, TheLockGoesWithAKilledProcess)
{
    Signal ready;
    ChildProcess first([&] {
        const SingleInstance instance("Tolvek");
        ready.send();
        return Signal().wait();
    });
    ready.wait();
    first.kill();
    EXPECT_TRUE(SingleInstance("Tolvek").isFirst());
}

TEST_F(SingleInstanceTest, TheLockGoesWithTheObject)
{
    EXPECT_TRUE(SingleInstance("Tolvek").isFirst());
    EXPECT_TRUE(SingleInstance("Tolvek").isFirst());
}

TEST_F(SingleInstanceTest, AProgramThatIsStartedDoesntInheritTheLock)
{
    Signal ready;
    std::optional<SingleInstance> instance(std::in_place, "Tolvek");
    ChildProcess started([&] {
        ready.sendFromOutput();
        return execl("/bin/sh", "sh", "-c", "echo; exec sleep 60", nullptr);
    });
    ready.wait();
    instance.reset();
    EXPECT_TRUE(SingleInstance("Tolvek").isFirst());
}

TEST_F(SingleInstanceTest, TheLockLiesInTheSessionsFolder)
{
    const SingleInstance instance("Tolvek");
    EXPECT_TRUE(fileExists(folder / "run" / "Tolvek.lock"));
    EXPECT_TRUE(entryNames(folder / "temp").empty());
}

TEST_F(SingleInstanceTest, WithoutASessionFolderTheUserHasOneUnderTheTempFolder)
{
    for (const char* value : {"", "/no/such/folder"}) {
        setenv("XDG_RUNTIME_DIR", value, 1);
        const SingleInstance instance("Tolvek");
        EXPECT_TRUE(instance.isFirst());
        EXPECT_FALSE(SingleInstance("Tolvek").isFirst());
        EXPECT_TRUE(fileExists(userFolder() / "Tolvek.lock"));
        EXPECT_EQ(fs::status(userFolder()).permissions(), fs::perms(0700));
    }
}

TEST_F(SingleInstanceTest, WhereNoLockCanBeHadEveryCopyIsTheFirst)
{
    unsetenv("XDG_RUNTIME_DIR");
    writeBytes(userFolder(), "a file in the folder's place");
    const SingleInstance instance("Tolvek");
    EXPECT_TRUE(instance.isFirst());
    EXPECT_TRUE(SingleInstance("Tolvek").isFirst());
}

TEST_F(SingleInstanceTest, AForeignFolderIsNotTrusted)
{
    unsetenv("XDG_RUNTIME_DIR");
    fs::create_directory(folder / "foreign");
    fs::create_directory_symlink(folder / "foreign", userFolder());
    EXPECT_TRUE(SingleInstance("Tolvek").isFirst());
    EXPECT_TRUE(entryNames(folder / "foreign").empty());
}

TEST_F(SingleInstanceTest, ASeparatorInTheNameStaysInTheFolder)
{
    const SingleInstance instance("a/../b");
    EXPECT_TRUE(fileExists(folder / "run" / "a_.._b.lock"));
}

}
