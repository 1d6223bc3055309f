// What the engine's own system calls answer.
#include "dao_fixture.h"

#include <cerrno>
#include <sqlite3.h>

namespace tolvek::test {
namespace {

// The engine's own system calls, whose answers it takes for a failing disk.
class FailingDiskQuotaTest : public DaoTest {
protected:
    void TearDown() override
    {
        setCalls(nullptr, nullptr);
        DaoTest::TearDown();
    }
    static void setCalls(sqlite3_syscall_ptr write, sqlite3_syscall_ptr truncate)
    {
        sqlite3_vfs* const system = sqlite3_vfs_find("unix");
        for (const char* name : {"write", "pwrite", "pwrite64"})
            system->xSetSystemCall(system, name, write);
        system->xSetSystemCall(system, "ftruncate", truncate);
    }
    template <int answer> static void failAlways()
    {
        setCalls(reinterpret_cast<sqlite3_syscall_ptr>(noWrite<answer>),
                 reinterpret_cast<sqlite3_syscall_ptr>(noTruncate<answer>));
    }

private:
    template <int answer> static ssize_t noWrite(int, const void*, std::size_t, std::int64_t)
    {
        errno = answer;
        return -1;
    }
    template <int answer> static int noTruncate(int, std::int64_t)
    {
        errno = answer;
        return -1;
    }
};

TEST_F(FailingDiskQuotaTest, AUsedUpOneIsAFullDiskAndNoFailingOne)
{
    Database database = opened();
    failAlways<EDQUOT>();
    EXPECT_EQ(errorOf([&] { addMail(database, u"2000", 1); }), 61);
    failAlways<EIO>();
    EXPECT_EQ(errorOf([&] { addMail(database, u"2000", 1); }), 57);
    setCalls(nullptr, nullptr);
    database.Close();
    EXPECT_EQ(mails(), 0);
}

}
}
