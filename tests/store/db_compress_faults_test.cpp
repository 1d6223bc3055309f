// Ends the process at every file operation of a compaction in turn, and makes
// each of them fail in turn. What must never happen: that the mails are gone,
// or that no start finds them again.
#include "platform/system/child_process.h"
#include "store/database_files.h"
#include "store/db_compress.h"
#include "store/db_start.h"
#include "support/archive_fixture.h"

namespace tolvek::test {
namespace {

constexpr int kCutOff = 42;
constexpr int kManyOperations = 5000; // more than any compaction here has

struct Disk {
    const char* name;
    bool knowsSecondNames;
};

class DbCompressFaultsTest : public ArchiveFixture, public ::testing::WithParamInterface<Disk> {
protected:
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        setMsgBoxHandler([](const MsgBoxRequest&) { return MsgAnswer::Ok; });
        store(mail(u"a@b.jp", u"c@d.jp", u"一通目"));
        dbCompress(gDbPath); // so there is a generation before
        store(mail(u"a@b.jp", u"c@d.jp", u"二通目", u"20000216"));
        std::filesystem::create_directory(kept());
        copyAll(folder.path(), kept());
    }

    Path kept() const { return folder / "kept"; }

    static void copyAll(const Path& from, const Path& to)
    {
        for (const std::string& name : fileNames(from))
            std::filesystem::copy_file(from / name, to / name);
    }
    void putBack()
    {
        for (const std::string& name : fileNames(folder.path()))
            std::filesystem::remove(folder / name);
        copyAll(kept(), folder.path());
    }

    // Runs `fault` at the operation with that number, counted from 0.
    static void faultAt(int number, const std::function<void()>& fault)
    {
        setFileProbe([number, fault, next = 0](FileOperation operation, const Path&) mutable {
            if (operation == FileOperation::Link && !GetParam().knowsSecondNames)
                throw std::system_error(std::make_error_code(std::errc::operation_not_permitted));
            if (next++ == number) fault();
        });
    }

    // A process of its own that ends at that operation. True when it got through.
    static bool compactedIn(int operations)
    {
        ChildProcess child([operations] {
            faultAt(operations, [] { leaveProcess(kCutOff); });
            dbCompress(gDbPath);
            return 0;
        });
        const int code = child.exitCode();
        EXPECT_TRUE(code == 0 || code == kCutOff) << code;
        return code != kCutOff;
    }

    static std::vector<Text> subjects(const Text& path)
    {
        return column(Statement{u"SELECT tblTolvek_Subject FROM tblTolvek"}, 0, path);
    }
    static const std::vector<Text>& bothMails()
    {
        static const std::vector<Text> both{u"一通目", u"二通目"};
        return both;
    }
    static void expectWhole(int operation)
    {
        if (GetParam().knowsSecondNames) {
            EXPECT_TRUE(databaseExists(gDbPath)) << "operation " << operation;
        }
        restoreFromNew(gDbPath); // what the next start does first
        ASSERT_TRUE(databaseExists(gDbPath)) << "operation " << operation;
        EXPECT_EQ(subjects(gDbPath), bothMails()) << "operation " << operation;
    }
    static void expectNextStart(int operation)
    {
        dbCompress(gDbPath);
        EXPECT_EQ(subjects(gDbPath), bothMails()) << "operation " << operation;
        EXPECT_EQ(subjects(gDbPath + u".Bak"), bothMails()) << "operation " << operation;
        EXPECT_FALSE(databaseExists(gDbPath + u".New")) << "operation " << operation;
    }
};

TEST_P(DbCompressFaultsTest, AnEndAtAnyMomentLosesNothing)
{
    int operation = 0;
    while (operation < kManyOperations && !compactedIn(operation)) {
        expectWhole(operation);
        expectNextStart(operation);
        putBack();
        ++operation;
    }
    EXPECT_GT(operation, 10);
    EXPECT_LT(operation, kManyOperations);
}

TEST_P(DbCompressFaultsTest, AFailureOfAnyOperationLosesNothing)
{
    bool failed = true;
    int operation = 0;
    for (; failed && operation < kManyOperations; ++operation) {
        failed = false;
        faultAt(operation, [&] {
            failed = true;
            throw std::system_error(std::make_error_code(std::errc::io_error));
        });
        dbCompress(gDbPath);
        setFileProbe({});
        expectWhole(operation);
        expectNextStart(operation);
        putBack();
    }
    EXPECT_GT(operation, 10);
    EXPECT_LT(operation, kManyOperations);
}

INSTANTIATE_TEST_SUITE_P(OnDisks, DbCompressFaultsTest,
                         ::testing::Values(Disk{"WithSecondNames", true},
                                           Disk{"WithoutSecondNames", false}),
                         [](const auto& disk) { return disk.param.name; });

}
}
