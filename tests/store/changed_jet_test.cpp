#include "support/archive_fixture.h"
#include "support/changed_jet.h"

#include <fstream>

namespace tolvek::test {
namespace {

class ChangedJetTest : public ArchiveFixture {
protected:
    void TearDown() override
    {
        DBEngine::Abandon();
        DBEngine::takeSpoiltTexts();
        ArchiveFixture::TearDown();
    }
};

struct NamedChange {
    std::string file;
    ByteChange change;
};

// Each line: the name of a file, a position, a value.
std::vector<NamedChange> changesOfTheTable()
{
    std::ifstream lines(TOLVEK_TEST_DATA "/jet/changed_bytes.tsv");
    std::vector<NamedChange> changes;
    std::string name;
    int value = 0;
    for (std::size_t at = 0; lines >> name >> at >> value;)
        changes.push_back({name, {at, static_cast<unsigned char>(value)}});
    return changes;
}

// Each of these changes used to give an archive with other rows and no error.
TEST_F(ChangedJetTest, AChangedByteIsFoundOrChangesNothing)
{
    std::map<std::string, ChangedJet> sound;
    const auto changes = changesOfTheTable();
    ASSERT_GT(changes.size(), 50u);
    for (const auto& [file, change] : changes)
        EXPECT_NE(sound.try_emplace(file, file).first->second.with(change),
                  ChangedJet::Outcome::OtherRows)
            << file << ", " << change.at << ", " << int(change.value);
}

}
}
