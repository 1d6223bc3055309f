#include "store/spoilt_texts.h"

#include "store/database_files.h"
#include "store/db_compress.h"
#include "support/archive_fixture.h"
#include "support/jet_reader.h"
#include "support/test_data.h"

namespace tolvek::test {
namespace {

class SpoiltTextsTest : public ArchiveFixture {
protected:
    void TearDown() override
    {
        DBEngine::Abandon();
        ArchiveFixture::TearDown();
    }
    // The archive of an earlier version in which a character of a subject is zeroed.
    void givenSpoilt()
    {
        std::string bytes = readBytes(Path(TOLVEK_TEST_DATA) / "jet" / "v210_apostrophe_jet4.mdb");
        const std::string subject("o\0n\0'\0t\0", 8);
        const std::size_t at = bytes.find(subject);
        ASSERT_NE(at, std::string::npos);
        bytes[at + 2] = '\0';
        removeDatabase(gDbPath);
        writeBytes(file("Tolvek.Mdb"), bytes);
    }
    const Text report_ = u"元のデータベースに，壊れた文字のある項目が 1 個ありました。\r\n"
                         u"   その部分は読めません。元のファイルはそのまま残っています。";
    JetReader reader_;
};

TEST_F(SpoiltTextsTest, AreReportedOnceWhenTheArchiveIsTurnedIntoOurs)
{
    givenSpoilt();
    boxes.expect(report_);
    dbCompress(gDbPath);
    EXPECT_EQ(rows(u"tblTolvek"), 5);
    EXPECT_TRUE(exists("Tolvek.Mdb.Jet"));
    dbCompress(gDbPath);
    reportSpoiltTexts();
}

}
}
