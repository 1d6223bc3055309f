#include "jet_fixture.h"

#include <random>

namespace tolvek::test {
namespace {

class JetDamageTest : public JetTest {
protected:
    void expectDamage(const std::string& what)
    {
        EXPECT_EQ(errorOfCompacting(), 3343) << what;
        EXPECT_EQ(errorOfOpening(), 3343) << what;
        EXPECT_TRUE(isUnchanged()) << what;
        EXPECT_EQ(files(), Names{"Old.Mdb"}) << what;
    }
};

TEST_F(JetDamageTest, ADamagedFileIs3343AndStaysAsItIs)
{
    for (const std::string name : {"truncated_jet4", "damaged_jet4"}) {
        given(name);
        expectDamage(name);
    }
    EXPECT_EQ(errorTextOf([&] { DBEngine::CompactDatabase(path(), path("New.Mdb")); }),
              u"データベースの形式 '" + path() + u"' を認識できません。");
}

// Also at the end of a page, where it is harder to notice.
TEST_F(JetDamageTest, AFileThatWasCutOffIs3343)
{
    given("current_jet4");
    const std::string whole = contents_;
    for (const std::size_t size : {100U, 300U, 4096U, 8192U, 12288U, 100000U, 163840U, 409600U}) {
        givenBytes(whole.substr(0, size));
        expectDamage(std::to_string(size));
    }
}

TEST_F(JetDamageTest, APageThatWasLostIs3343)
{
    given("current_jet4");
    const std::string whole = contents_;
    for (const std::size_t page : {2U, 45U, 46U}) {
        std::string damaged = whole;
        std::fill_n(damaged.begin() + static_cast<std::ptrdiff_t>(page * 4096), 4096, '\0');
        givenBytes(damaged);
        expectDamage(std::to_string(page));
    }
}

// Whatever a file contains, the program survives and the file stays.
class Mutation {
public:
    explicit Mutation(unsigned seed) : random_(seed) {}

    std::string of(std::string bytes)
    {
        for (int n = upTo(12); n >= 0; --n)
            spoil(bytes);
        std::copy_n("\0\1\0\0Standard Jet DB\0\1", 21, bytes.begin());
        return bytes;
    }

private:
    std::size_t upTo(std::size_t limit)
    {
        return std::uniform_int_distribution<std::size_t>(0, limit)(random_);
    }
    void spoil(std::string& bytes)
    {
        // The definitions at the beginning and the headers of pages matter most.
        const std::size_t page = upTo(1) ? upTo(30) : upTo(bytes.size() / 4096 - 1);
        const std::size_t at = page * 4096 + (upTo(1) ? upTo(64) : upTo(4000));
        switch (upTo(3)) {
        case 0:
            bytes[at] = static_cast<char>(upTo(255));
            break;
        case 1:
            bytes[at] = static_cast<char>(bytes[at] ^ 1 << upTo(7));
            break;
        case 2:
            std::fill_n(bytes.begin() + static_cast<std::ptrdiff_t>(at), 1 + upTo(40), '\xFF');
            break;
        default:
            std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(upTo(bytes.size() - 100)), 40,
                        bytes.begin() + static_cast<std::ptrdiff_t>(at));
        }
    }
    std::mt19937 random_;
};

TEST_F(JetDamageTest, NoFileBringsTheProgramDown)
{
    given("v210_apostrophe_jet4");
    const std::string whole = contents_;
    int refused = 0, taken = 0;
    for (unsigned seed = 1; seed <= 300; ++seed) {
        givenBytes(Mutation(seed).of(whole));
        const int error = errorOfOpening();
        EXPECT_TRUE(error == 0 || error == 3343) << error << " with seed " << seed;
        EXPECT_TRUE(isUnchanged()) << seed;
        ++(error == 0 ? taken : refused);
    }
    EXPECT_GT(refused, 50);
    EXPECT_GT(taken, 20);
    EXPECT_EQ(files(), Names{"Old.Mdb"});
}

}
}
