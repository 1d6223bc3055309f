#include "store/spoilt_texts.h"

#include "store/database_files.h"
#include "store/db_compress.h"
#include "support/archive_fixture.h"
#include "support/jet_reader.h"
#include "support/spoilt_jet.h"

namespace tolvek::test {
namespace {

class SpoiltTextsTest : public ArchiveFixture {
protected:
    void TearDown() override
    {
        DBEngine::Abandon();
        ArchiveFixture::TearDown();
    }
    void givenSpoilt()
    {
        removeDatabase(gDbPath);
        writeBytes(file("Tolvek.Mdb"), jetWithZeroedText());
    }
    JetReader reader_;
};

TEST_F(SpoiltTextsTest, AreReportedOnceWhenTheArchiveIsTurnedIntoOurs)
{
    givenSpoilt();
    boxes.expect(kOneSpoiltText);
    dbCompress(gDbPath);
    EXPECT_EQ(rows(u"tblTolvek"), 5);
    EXPECT_TRUE(exists("Tolvek.Mdb.Jet"));
    dbCompress(gDbPath);
    reportSpoiltTexts();
}

}
}
