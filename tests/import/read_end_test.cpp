// A read of mail ends after the first box when nothing more can be stored.
#include "app/database.h"
#include "app/settings.h"
#include "import/mail_box_read.h"
#include "import/tmp_read.h"
#include "import_fixture.h"
#include "platform/system/test_hooks.h"
#include "store/database_files.h"
#include "support/fault_injection.h"

namespace tolvek::test {
namespace {

class ReadEndTest : public ImportTest {
protected:
    void SetUp() override
    {
        ImportTest::SetUp();
        fillMailBoxTable();
        gPostPetDir = joinPath(appPath(), u"PostPet");
        gRecievMailReadOption = {};
        gSendMailReadOption = {};
        for (int element = 0; element < 3; ++element)
            gRecievMailReadOption[element] = 1;
        gSendMailReadOption[0] = 1;
        converterLibrary().Tolvek_Edit = [this](const Text&, const Text& box, const Text&,
                                                Int16& count, Int16& status) {
            ++boxesConverted;
            givenMails(10 * boxesConverted, box);
            count = 5;
            status = 0;
        };
    }
    void TearDown() override
    {
        hooks::setFileProbe({});
        gRecievMailReadOption = {};
        gSendMailReadOption = {};
        ImportTest::TearDown();
    }

    // Addresses of sixteen characters: each mail's text is read before it is stored.
    void givenMails(int firstSecond, const Text& subject) const
    {
        std::vector<Text> lines{u"<Start>"};
        for (int second = firstSecond; second < firstSecond + 5; ++second)
            append(lines, second, subject, 3);
        givenTmpLines(lines);
    }
    static void append(std::vector<Text>& lines, int second, const Text& subject, int textLines)
    {
        lines.insert(lines.end(),
                     {u"From:taro-yamada@x.jp", u"To:hana-tanaka@x.jp", u"Subject:" + subject,
                      u"Date:15 Feb 2000 10:11:" + decimal(second), u"Mail"});
        lines.insert(lines.end(), static_cast<std::size_t>(textLines), Text(100, u'字'));
        lines.push_back(u"<End>");
    }
    static void fail(std::errc code, FileOperation failing)
    {
        hooks::setFileProbe([=](FileOperation operation, const Path& path) {
            const std::string name = path.filename().string();
            if (operation == failing && name.starts_with("Tolvek.Mdb"))
                throw std::system_error(std::make_error_code(code));
        });
    }
    void readAll()
    {
        const DBEngine::Session session;
        MailBoxRead();
    }

    int boxesConverted = 0;
};

TEST_F(ReadEndTest, AllBoxesAreReadWhenNothingFails)
{
    readAll();
    EXPECT_EQ(boxesConverted, 4);
    EXPECT_EQ(rows(u"tblTolvek"), 20);
}

TEST_F(ReadEndTest, AFullDiskOrAFailingDeviceEndsTheReadAfterOneBox)
{
    for (const auto& [code, number] :
         {std::pair{std::errc::no_space_on_device, "61"}, {std::errc::io_error, "57"}}) {
        boxesConverted = 0;
        fail(code, FileOperation::Write);
        readAll();
        hooks::setFileProbe({});
        const Reports reports = takeReports();
        ASSERT_EQ(reports.size(), 1u);
        EXPECT_TRUE(reports[0].ends_with(number)) << reports[0];
        EXPECT_EQ(boxesConverted, 1);
    }
}

TEST_F(ReadEndTest, AMissingADamagedAndAReadOnlyArchiveEndTheReadAfterOneBox)
{
    writeBytes(file("Tolvek.Mdb"), std::string(4096, 'x'));
    readAll();
    EXPECT_EQ(takeReports(), Reports{"setName 3343"});
    removeDatabase(gDbPath);
    readAll();
    EXPECT_EQ(takeReports(), Reports{"setName 3024"});
    Table_Create();
    std::filesystem::permissions(file("Tolvek.Mdb"), std::filesystem::perms::owner_read);
    readAll();
    EXPECT_EQ(takeReports(), Reports{"TolvekDB_Insert 3027"});
    EXPECT_EQ(boxesConverted, 3);
}

// In a sent mail only the receiver is looked up. The mail has all its headings then, and
// addresses of lengths for which it would be looked for, but nothing else is tried with it.
TEST_F(ReadEndTest, AHeadingThatCantBeLookedUpEndsTheReadBeforeItsMailIsLookedFor)
{
    converterLibrary().Tolvek_Edit = [this](const Text&, const Text&, const Text&, Int16& count,
                                            Int16& status) {
        givenTmpLines({u"<Start>", u"Subject:s", u"Date:15 Feb 2000 10:11:12", u"From:me@home.jp",
                       u"To:hana@tanaka.jp", u"Mail", u"t", u"<End>"});
        count = 1;
        status = 0;
    };
    gRecievMailReadOption = {};
    removeDatabase(gDbPath);
    readAll();
    EXPECT_EQ(takeReports(), Reports{"setName 3024"});
}

// Whatever operation fails and keeps failing, there is one box, and no mail is stored
// twice.
TEST_F(ReadEndTest, ADiskThatFailsFromAnyMomentOnBringsOneBoxAndNoTwins)
{
    for (int operation = 0, reported = 1; reported > 0 && operation < kManyOperations;
         operation += 7) {
        boxesConverted = 0;
        hooks::setFileProbe([operation, next = 0](FileOperation, const Path& path) mutable {
            const std::string name = path.filename().string();
            if (name.starts_with("Tolvek.Mdb") && next++ >= operation)
                throw std::system_error(std::make_error_code(std::errc::io_error));
        });
        readAll();
        hooks::setFileProbe({});
        reported = static_cast<int>(takeReports().size());
        EXPECT_LE(reported, 1) << operation;
        const Text twins = u"tblTolvek_SubKey";
        for (const Text& subKey : column(twins))
            EXPECT_EQ(subKey, u"0") << operation;
        ASSERT_LT(operation + 7, kManyOperations);
    }
}

TEST_F(ReadEndTest, ABadMailEndsNothing)
{
    gMyMailHandle = u"O'Neil";
    converterLibrary().Tolvek_Edit = [this](const Text&, const Text&, const Text&, Int16& count,
                                            Int16& status) {
        givenTmpLines({u"<Start>", u"From:taro-yamada@x.jp", u"To:", u"Subject:s",
                       u"Date:15 Feb 2000 10:11:12", u"Mail", u"t", u"<End>"});
        count = 1;
        status = 0;
        ++boxesConverted;
    };
    readAll();
    EXPECT_EQ(takeReports(), Reports(3, "TolvekDB_Insert 3075"));
    EXPECT_EQ(boxesConverted, 4);
}

// The first part of a long mail can't be stored, and neither can the next.
TEST_F(ReadEndTest, ALongMailThatCantBeStoredBringsOneBox)
{
    std::vector<Text> lines{u"<Start>"};
    append(lines, 10, u"長い", 3 * 15 * 33);
    givenTmpLines(lines);
    fail(std::errc::no_space_on_device, FileOperation::Write);
    tmpRead(0, 0, 1);
    hooks::setFileProbe({});
    EXPECT_EQ(takeReports().size(), 1u);
    EXPECT_EQ(rows(u"tblTolvek"), 0);
}

// More than the file's buffer holds, so that there are several reads.
TEST_F(ReadEndTest, ATempFileThatFailsAtTheNthReadBringsOneBoxAndIsClosed)
{
    std::vector<Text> lines{u"<Start>"};
    for (int second = 10; second < 60; ++second)
        append(lines, second, u"件名", 40);
    givenTmpLines(lines);
    int reported = 1, read = 0;
    for (; reported > 0; ++read) {
        ASSERT_LT(read, 100);
        hooks::setFileProbe([read, next = 0](FileOperation operation, const Path& path) mutable {
            if (operation == FileOperation::Read && path.extension() == ".Tmp" && next++ >= read)
                throw std::system_error(std::make_error_code(std::errc::io_error));
        });
        tmpRead(0, 0, 50);
        hooks::setFileProbe({});
        const Reports reports = takeReports();
        reported = static_cast<int>(reports.size());
        EXPECT_LE(reported, 1) << read;
        for (const std::string& report : reports)
            EXPECT_TRUE(report == "tmpRead 57" || report == "edMail 57") << report;
        EXPECT_EQ(freeFile(), 1) << read;
    }
    EXPECT_GT(read, 3);
    EXPECT_EQ(rows(u"tblTolvek"), 50);
}

TEST_F(ReadEndTest, APathThatTheConverterCantTakeIsRefusedBeforeAnythingIsStored)
{
    converterLibrary().requirePath = [](const Text& path) {
        if (path.find(u"黄色") != Text::npos) throw RuntimeError(75);
    };
    EXPECT_THROW(readAll(), RuntimeError);
    EXPECT_EQ(boxesConverted, 0);
    gRecievMailReadOption[2] = 0;
    readAll();
    EXPECT_EQ(boxesConverted, 3);
}

}
}
