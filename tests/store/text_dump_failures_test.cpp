#include "platform/system/test_hooks.h"
#include "store/database_files.h"
#include "store/text_dump.h"
#include "support/fault_injection.h"
#include "text_dump_fixture.h"

namespace tolvek::test {
namespace {

struct Routine {
    const char* name;
    const char* title; // of the question
    void (*run)();
    const char* file;
};

constexpr Routine kUnLoads[] = {
    {"tblTolvek_UnLoad", "tblTolvek UnLoad", tblTolvek_UnLoad, "tblTolvek.Txt"},
    {"tblSearch_Addresses_UnLoad", "tblSearch Address UnLoad", tblSearch_Addresses_UnLoad,
     "tblSearch_Addr.Txt"},
    {"tblSearch_Name_UnLoad", "tblSearch Name UnLoad", tblSearch_Name_UnLoad, "tblSearch_Name.Txt"},
    {"tblFriend_UnLoad", "tblfriend UnLoad", tblFriend_UnLoad, "tblFriend.Txt"},
    {"tblFilter_UnLoad", "tblFilter UnLoad", tblFilter_UnLoad, "tblFilter.txt"},
    {"tblFilterData_UnLoad", "tblfilter Data UnLoad", tblFilterData_UnLoad, "tblFilterData.txt"},
};
constexpr Routine kLoads[] = {
    {"tblTolvek_Load", "tblTolvek Load", tblTolvek_Load, "tblTolvek.Txt"},
    {"tblSearch_Addresses_Load", "tblSearch Address Load", tblSearch_Addresses_Load,
     "tblSearch_Addr.Txt"},
    {"tblSearch_Name_Load", "tblsearch Name Load", tblSearch_Name_Load, "tblSearch_Name.Txt"},
    {"tblFriend_Load", "tblfriend Load", tblFriend_Load, "tblFriend.Txt"},
    {"tblFilterData_Load", "tblfilter Data Load", tblFilterData_Load, "tblFilterData.txt"},
};

class TextDumpFailuresTest : public TextDumpFixture {
protected:
    void TearDown() override
    {
        hooks::setFileProbe({});
        TextDumpFixture::TearDown();
    }
    void expectClosed(const Routine& routine)
    {
        EXPECT_FALSE(gDb.isOpen()) << routine.name;
        EXPECT_EQ(freeFile(), 1) << routine.name;
    }
    static void fillDisk(FileOperation failing)
    {
        hooks::setFileProbe([failing](FileOperation operation, const Path& path) {
            if (operation == failing && path.extension() != ".Mdb")
                throw std::system_error(std::make_error_code(std::errc::no_space_on_device));
        });
    }
    static void putMany(int count, const std::function<Statement(int)>& insert)
    {
        Database opened = DBEngine::OpenDatabase(gDbPath);
        inTransaction([&] {
            for (int i = 0; i < count; ++i)
                opened.Execute(insert(i), dbFailOnError);
        });
        opened.Close();
    }
};

TEST_F(TextDumpFailuresTest, AMissingDatabaseThatIsRefusedEndsAnUnloadBeforeItsFileIsTouched)
{
    removeDatabase(gDbPath);
    for (const Routine& routine : kUnLoads) {
        givenText(routine.file, u"\"an earlier unload\"\r\n");
        routine.run();
        EXPECT_EQ(reports.take(),
                  (Reports{question(routine.title), routine.name + std::string(" 3024")}));
        EXPECT_EQ(textOf(routine.file), u"\"an earlier unload\"\r\n");
        EXPECT_FALSE(databaseExists(gDbPath));
        expectClosed(routine);
    }
}

TEST_F(TextDumpFailuresTest, AMissingDatabaseThatIsCreatedIsUnloadedAsItIs)
{
    reports.listen(MsgAnswer::Yes);
    for (const Routine& routine : kUnLoads) {
        removeDatabase(gDbPath);
        givenText(routine.file, u"\"an earlier unload\"\r\n");
        routine.run();
        EXPECT_EQ(reports.take(), Reports{question(routine.title)});
        EXPECT_EQ(textOf(routine.file), u"") << routine.name;
        EXPECT_TRUE(databaseExists(gDbPath)) << routine.name;
        expectClosed(routine);
    }
}

TEST_F(TextDumpFailuresTest, AMissingDatabaseIsAskedForByALoadOnlyWhenItsFileIsThere)
{
    removeDatabase(gDbPath);
    for (const Routine& routine : kLoads) {
        routine.run();
        EXPECT_EQ(reports.take(), Reports{});
        givenText(routine.file, u"");
        routine.run();
        EXPECT_EQ(reports.take(),
                  (Reports{question(routine.title), routine.name + std::string(" 3024")}));
        EXPECT_FALSE(databaseExists(gDbPath));
        expectClosed(routine);
    }
}

TEST_F(TextDumpFailuresTest, AMissingDatabaseThatIsCreatedTakesTheRecords)
{
    putMail(u"101112", u"件名");
    tblTolvek_UnLoad();
    removeDatabase(gDbPath);
    reports.listen(MsgAnswer::Yes);
    tblTolvek_Load();
    EXPECT_EQ(reports.take(), Reports{question("tblTolvek Load")});
    EXPECT_EQ(value(u"SELECT tblTolvek_Subject FROM tblTolvek"), u"件名");
    for (const Routine& routine : kLoads) {
        removeDatabase(gDbPath);
        givenText(routine.file, u"");
        routine.run();
        EXPECT_EQ(reports.take(), Reports{question(routine.title)});
        EXPECT_TRUE(databaseExists(gDbPath)) << routine.name;
    }
}

TEST_F(TextDumpFailuresTest, ANullEndsTheUnloadWithWhatWasWritten)
{
    addFriend(u"a@x.jp", u"n", u"p", u"k", 1);
    execute(Statement{u"INSERT INTO tblFriend (tblFriend_Address) VALUES( 'b@x.jp' )"});
    addFriend(u"c@x.jp", u"n", u"p", u"k", 1);
    tblFriend_UnLoad();
    EXPECT_EQ(reports.take(), Reports{"tblFriend_UnLoad 94"});
    EXPECT_EQ(textOf("tblFriend.Txt"), u"\"k\",\"p\",\"n\",\"a@x.jp\",1\r\n");
    expectClosed(kUnLoads[3]);
}

TEST_F(TextDumpFailuresTest, MoreRulesThanSixteenBitsNumberEndTheUnload)
{
    putMany(3277, [](int i) {
        Statement sql{u"INSERT INTO tblFilter ( tblFilter_No,tblFilter_TermsCode,"
                      u"tblFilter_ActionCode,tblFilter_Header,tblFilter_Data ) VALUES( "};
        return sql << i << u", 0, 0, 'h', 'd' )";
    });
    tblFilter_UnLoad();
    EXPECT_EQ(reports.take(), Reports{"tblFilter_UnLoad 6"});
    EXPECT_TRUE(textOf("tblFilter.txt").ends_with(u"\r\n32760,0,0,\"h\",\"d\"\r\n"));
}

TEST_F(TextDumpFailuresTest, MoreMailsThanSixteenBitsCountArentUnloaded)
{
    putMany(32768, [](int i) {
        Statement sql{u"INSERT INTO tblTolvek (tblTolvek_YMD, tblTolvek_HMS, tblTolvek_SubKey, "
                      u"tblTolvek_SndRcvFlag, tblTolvek_SndName, tblTolvek_SndAdd, "
                      u"tblTolvek_RcvName, tblTolvek_RcvAdd) VALUES( '"};
        return sql << decimal(10000000 + i)
                   << u"', '101112', 0, False, 'a', 'a@x.jp', 'b', 'b@x.jp' )";
    });
    tblTolvek_UnLoad();
    EXPECT_EQ(reports.take(), (Reports{"GET_RECCNT 6", "tblTolvek_UnLoad 3420"}));
    EXPECT_EQ(rows(u"tblTolvek"), 32768);
    expectClosed(kUnLoads[0]);
}

TEST_F(TextDumpFailuresTest, AFullDiskIsToldOnceByEachRoutineAndTouchesNoDatabase)
{
    putMail(u"101112", u"件名");
    putMail(u"101113", u"長い", Text(200000, u'字')); // larger than the write buffer
    addFriend(u"a@x.jp", u"n", u"p");
    addFilter(10, 0, 0, u"h", u"d");
    putResult(u"0", u"10", u"101112");
    put(u"tblSearch_Name", {u"n"});
    put(u"tblSearch_Addresses", {u"a@x.jp"});
    const std::string archive = readBytes(file("Tolvek.Mdb"));
    for (const FileOperation failing :
         {FileOperation::Create, FileOperation::Write, FileOperation::Flush}) {
        fillDisk(failing);
        for (const Routine& routine : kUnLoads) {
            routine.run();
            EXPECT_EQ(reports.take(), Reports{routine.name + std::string(" 61")});
            expectClosed(routine);
        }
        hooks::setFileProbe({});
        EXPECT_EQ(readBytes(file("Tolvek.Mdb")), archive);
    }
    tblTolvek_UnLoad(); // there is room again
    EXPECT_TRUE(textOf("tblTolvek.Txt").ends_with(u"\"\"\r\n"));
}

TEST_F(TextDumpFailuresTest, AFailureOfAnyOperationOfAnUnloadIsToldAndCostsNoMail)
{
    putMail(u"101112", u"件名");
    int reported = 0;
    failEachOperation(tblTolvek_UnLoad, [&](int operation) {
        const int shown = static_cast<int>(reports.take().size());
        EXPECT_LE(shown, 1) << operation;
        reported += shown;
        EXPECT_EQ(rows(u"tblTolvek"), 1) << operation;
        EXPECT_EQ(freeFile(), 1) << operation;
    });
    EXPECT_GT(reported, 5);
}

TEST_F(TextDumpFailuresTest, AFileThatMayNotBeWrittenKeepsItsContent)
{
    givenText("tblFriend.Txt", u"kept");
    std::filesystem::permissions(file("tblFriend.Txt"), std::filesystem::perms::owner_read);
    tblFriend_UnLoad();
    EXPECT_EQ(reports.take(), Reports{"tblFriend_UnLoad 75"});
    EXPECT_EQ(textOf("tblFriend.Txt"), u"kept");
}

TEST_F(TextDumpFailuresTest, AFileThatCantBeOpenedCostsALoadNothing)
{
    addFriend(u"a@x.jp", u"n", u"p");
    givenText("tblFriend.Txt", u"");
    hooks::setFileProbe([](FileOperation operation, const Path& path) {
        if (operation == FileOperation::Open && path.filename() == "tblFriend.Txt")
            throw std::system_error(std::make_error_code(std::errc::permission_denied));
    });
    tblFriend_Load();
    EXPECT_EQ(reports.take(), Reports{"tblFriend_Load 75"});
    hooks::setFileProbe({});
    EXPECT_EQ(rows(u"tblFriend"), 1);
}

}
}
