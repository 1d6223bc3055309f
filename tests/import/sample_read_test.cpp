// The sample folder, from PostPet's files through the built converter library to rows:
// what a first day stores, and that a second one doesn't change it.
#include "app/database.h"
#include "app/settings.h"
#include "app/state.h"
#include "app/test_hooks.h"
#include "demo/sample_folder.h"
#include "import/mail_box_read.h"
#include "store/search_tables.h"
#include "support/archive_fixture.h"

#include <algorithm>

namespace tolvek::test {
namespace {

class SampleReadTest : public ArchiveFixture {
protected:
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        hooks::setConverterLibrary({});
        const std::filesystem::path library = CONVERTER_LIBRARY;
        std::filesystem::copy_file(library, file(library.filename()));
        gPostPetDir = joinPath(appPath(), u"PostPet");
        sample::makeSampleFolder(nativePath(gPostPetDir));
        gMyMailAddr = u"hana@example.jp";
        gMyMailHandle = u"はな";
        fillMailBoxTable();
        fillMonthNames();
        chooseAll();
    }

    static void chooseAll()
    {
        gRecievMailReadOption = {};
        gSendMailReadOption = {};
        for (int element = 0; element <= 9; ++element)
            gRecievMailReadOption[element] = 1;
        for (int element = 0; element <= 3; ++element)
            gSendMailReadOption[element] = 1;
    }

    static void read()
    {
        const DBEngine::Session session;
        MailBoxRead();
        edSearch_Name();
        edSearch_Addr();
    }

    static Path box(TextView folder, TextView mailFile)
    {
        return nativePath(joinPath(joinPath(gPostPetDir, folder), mailFile));
    }

    // Every field of every mail, in key order.
    static std::vector<Text> everything()
    {
        Database archive = DBEngine::OpenDatabase(gDbPath);
        std::vector<Text> fields;
        for (Recordset row = archive.OpenRecordset(Statement{u"SELECT * FROM tblTolvek"});
             !row.Eof(); row.MoveNext())
            for (int field = 0; field < 26; ++field)
                fields.push_back(row.field(field).text());
        archive.Close();
        return fields;
    }
};

TEST_F(SampleReadTest, AFirstDayStoresEachMailOnceWithItsAddressesAndNames)
{
    read();
    EXPECT_EQ(rows(u"tblTolvek"), 193);
    EXPECT_EQ(rows(u"tblSearch_Addresses"), 31);
    EXPECT_EQ(rows(u"tblSearch_Name"), 30);
    EXPECT_FALSE(exists("Tolvek.Mdb-wal"));
}

TEST_F(SampleReadTest, ReadingAllBoxesTwiceStoresNothingNew)
{
    read();
    const std::vector<Text> once = everything();
    read();
    EXPECT_EQ(everything(), once);
}

TEST_F(SampleReadTest, TheLongMailIsStoredInTwoPartsASecondApart)
{
    read();
    const std::vector<Text> subjects = column(
        u"SELECT tblTolvek_Subject FROM tblTolvek WHERE (tblTolvek_Subject = '旅の日記、ぜんぶ' or "
        u"tblTolvek_Subject = '旅の日記、ぜんぶ　　（次に続く）')");
    EXPECT_EQ(subjects,
              (std::vector<Text>{u"旅の日記、ぜんぶ　　（次に続く）", u"旅の日記、ぜんぶ"}));
}

TEST_F(SampleReadTest, AMailToOneselfIsStoredFromTheReceiveSide)
{
    read();
    EXPECT_EQ(rows(u"tblTolvek WHERE (tblTolvek_SndAdd = 'hana@example.jp' AND tblTolvek_RcvAdd = "
                   u"'hana@example.jp')"),
              2);
    EXPECT_EQ(rows(u"tblTolvek WHERE (tblTolvek_SndAdd = 'hana@example.jp' AND tblTolvek_RcvAdd = "
                   u"'hana@example.jp' "
                   u"AND tblTolvek_SndRcvFlag = False)"),
              2);
}

TEST_F(SampleReadTest, NoTextOfTheArchiveHoldsAQuoteABarOrALostCharacter)
{
    read();
    for (const Text& field : everything())
        EXPECT_EQ(field.find_first_of(u"'|\uFFFD〓\u001B"), Text::npos) << toUtf8(field);
}

TEST_F(SampleReadTest, BrokenMissingAndEmptyBoxesCostNothingOfTheOthers)
{
    read();
    const int all = rows(u"tblTolvek");
    removeFile(file("Tolvek.Mdb"));
    Table_Create();
    const std::string whole = readBytes(box(u"受信フォルダ", u"黄色の引出し.ppm"));
    writeBytes(box(u"受信フォルダ", u"黄色の引出し.ppm"),
               std::string("\0\1\2no mail at all\xFF", 18));
    removeFile(box(u"受信フォルダ", u"ピンクの引出し.ppm"));
    writeBytes(box(u"受信フォルダ", u"黒の引出し.ppm"), "");
    std::filesystem::create_directory(box(u"受信フォルダ", u"赤の引出し.ppm"));
    read();
    const int rest = rows(u"tblTolvek");
    EXPECT_EQ(rows(u"tblTolvek WHERE (tblTolvek_SndRcvFlag = True)") > 0, true);
    EXPECT_GT(rest, 85);
    EXPECT_LT(rest, all);
    // A truncated box gives the mails that are complete in it.
    writeBytes(box(u"受信フォルダ", u"黄色の引出し.ppm"), whole.substr(0, whole.size() / 2));
    read();
    EXPECT_GT(rows(u"tblTolvek"), rest);
}

TEST_F(SampleReadTest, AMissingLibraryIsToldOnceForEachReadAndHarmsNothing)
{
    read();
    const std::vector<Text> before = everything();
    hooks::setConverterLibrary({});
    removeFile(file(std::filesystem::path(CONVERTER_LIBRARY).filename()));
    try {
        MailBoxRead();
        ADD_FAILURE() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), 53);
        EXPECT_NE(error.description().find(u"Tolvek"), Text::npos);
    }
    EXPECT_EQ(everything(), before);
}

}
}
