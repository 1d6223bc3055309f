// How many of 300 mails are recovered from a corrupt archive, with the .Bak and from
// the corrupt file alone. 200 of them are also in the .Bak; 100 were stored later and
// are at the end of the file.
#include "platform/runtime/test_hooks.h"
#include "store/database_files.h"
#include "store/db_compress.h"
#include "support/archive_fixture.h"

#include <algorithm>
#include <map>
#include <random>

namespace tolvek::test {
namespace {

constexpr std::size_t kPage = 4096;
constexpr int kMails = 300, kInBak = 200;

// The pages of a sound archive, by their kind.
class Pages {
public:
    explicit Pages(std::string& bytes) : bytes_(bytes)
    {
        for (std::size_t at = kPage; at < bytes.size(); at += kPage)
            if (bytes[at] != 0 || isFollowed(at)) byKind_[bytes[at]].push_back(at);
    }
    // The middle page of a kind belongs to the mails, which are most of the file.
    std::size_t mails(std::size_t after = 0) const { return middle('\x0d') + after * kPage; }
    std::size_t inner() const { return byKind_.at('\x05').front(); }
    std::size_t index() const { return middle('\x0a'); }
    std::size_t overflow() const { return middle('\0'); }

    void fill(std::size_t at, std::size_t size, char byte)
    {
        std::fill_n(bytes_.begin() + static_cast<std::ptrdiff_t>(at), size, byte);
    }
    void garble(std::size_t at, std::size_t size)
    {
        std::mt19937 chance(20000215);
        for (std::size_t i = 0; i < size; ++i)
            bytes_[at + i] = static_cast<char>(chance() % 256);
    }
    void swap(std::size_t one, std::size_t other)
    {
        std::swap_ranges(bytes_.begin() + static_cast<std::ptrdiff_t>(one),
                         bytes_.begin() + static_cast<std::ptrdiff_t>(one + kPage),
                         bytes_.begin() + static_cast<std::ptrdiff_t>(other));
    }
    std::string& bytes() { return bytes_; }

private:
    // An overflow page that isn't the last one of its text: if the last one is zeroed,
    // the engine can't detect it.
    bool isFollowed(std::size_t at) const
    {
        return bytes_[at + 1] != 0 || bytes_[at + 2] != 0 || bytes_[at + 3] != 0;
    }
    std::size_t middle(char kind) const
    {
        const auto& pages = byKind_.at(kind);
        return pages[pages.size() / 2];
    }

    std::string& bytes_;
    std::map<char, std::vector<std::size_t>> byKind_;
};

struct Damage {
    const char* name;
    void (*spoil)(Pages&);
    int withBak, alone; // the least number of recovered mails
};

const Damage kDamages[] = {
    {"HeadOfAMailPageZeroed", [](Pages& p) { p.fill(p.mails(), 64, 0); }, 300, 300},
    {"MailPageZeroed", [](Pages& p) { p.fill(p.mails(), kPage, 0); }, 298, 290},
    {"MailPageGarbled", [](Pages& p) { p.garble(p.mails(), kPage); }, 298, 290},
    {"SectorOfAMailPageGarbled", [](Pages& p) { p.garble(p.mails(), 512); }, 299, 290},
    {"InnerPageZeroed", [](Pages& p) { p.fill(p.inner(), kPage, 0); }, 300, 300},
    {"InnerPageGarbled", [](Pages& p) { p.garble(p.inner(), kPage); }, 300, 300},
    {"IndexPageZeroed", [](Pages& p) { p.fill(p.index(), kPage, 0); }, 300, 300},
    {"IndexPageGarbled", [](Pages& p) { p.garble(p.index(), kPage); }, 300, 300},
    {"OverflowPageZeroed", [](Pages& p) { p.fill(p.overflow(), kPage, 0); }, 300, 299},
    {"OverflowPageGarbled", [](Pages& p) { p.garble(p.overflow(), kPage); }, 300, 299},
    {"TwoMailPagesSwapped", [](Pages& p) { p.swap(p.mails(), p.mails(4)); }, 300, 300},
    {"MailAndIndexPageSwapped", [](Pages& p) { p.swap(p.mails(), p.index()); }, 300, 300},
    {"FirstPageZeroed", [](Pages& p) { p.fill(0, kPage, 0); }, 300, 300},
    {"FirstPageGarbled", [](Pages& p) { p.garble(0, kPage); }, 300, 300},
    {"HeaderGarbled", [](Pages& p) { p.garble(0, 100); }, 300, 300},
    {"PageSizeChanged", [](Pages& p) { p.bytes()[16] ^= 0x08; }, 300, 300},
    {"SchemaGarbled", [](Pages& p) { p.garble(100, kPage - 100); }, 300, 300},
    {"ListOfFreePagesGarbled", [](Pages& p) { p.garble(32, 8); }, 300, 300},
    {"LastPageMissing", [](Pages& p) { p.bytes().resize(p.bytes().size() - kPage); }, 290, 290},
    {"CutInTheMiddleOfAPage", [](Pages& p) { p.bytes().resize(p.bytes().size() * 3 / 4 + 1000); },
     205, 200},
    {"CutAtHalf", [](Pages& p) { p.bytes().resize(p.bytes().size() / 2); }, 200, 100},
    {"SecondHalfZeroed", [](Pages& p) { p.fill(p.bytes().size() / 2, p.bytes().size() / 2, 0); },
     200, 100},
    {"NoBytesAtAll", [](Pages& p) { p.bytes().clear(); }, 200, 0},
};

class DamageTest : public ArchiveFixture, public ::testing::WithParamInterface<Damage> {
protected:
    // Every tenth mail is longer than a page.
    static Text textOf(int number)
    {
        const int lines = number % 10 == 0 ? 300 : 12;
        Text text;
        for (int i = 0; i < lines; ++i)
            text += u"本文の" + decimal(number) + u"通目、" + decimal(i) + u"行\r\n";
        return text;
    }
    static Mail mailOf(int number)
    {
        Mail made = mail(u"hanako" + decimal(number % 7) + u"@example.jp", u"taro@example.jp",
                         u"件名" + decimal(number), decimal(20000000 + number));
        made.Mail1 = textOf(number);
        return made;
    }
    static void storeAll(int from, int to)
    {
        const DBEngine::Session session;
        for (int number = from; number < to; ++number)
            store(mailOf(number));
    }
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        hooks::setMsgBox([this](const MsgBoxRequest& box) {
            asked.push_back(box.text);
            return box.buttons == MsgButtons::YesNo ? MsgAnswer::Yes : MsgAnswer::Ok;
        });
        storeAll(0, kInBak);
        dbCompress(gDbPath);
        storeAll(kInBak, kMails);
    }
    std::string spoil()
    {
        std::string bytes = readBytes(file("Tolvek.Mdb"));
        Pages pages(bytes);
        GetParam().spoil(pages);
        writeBytes(file("Tolvek.Mdb"), bytes);
        return bytes;
    }
    // The texts of the mails by subject; the archive must have no other rows.
    std::map<Text, Text> found()
    {
        std::map<Text, Text> mails;
        const auto subjects = column(u"SELECT tblTolvek_Subject FROM tblTolvek");
        const auto texts = column(u"SELECT tblTolvek_Mail1 FROM tblTolvek");
        for (std::size_t i = 0; i < subjects.size(); ++i)
            EXPECT_TRUE(mails.emplace(subjects[i], texts[i]).second) << "twice";
        return mails;
    }
    // Mails of the .Bak are unchanged, whatever the corrupt file has for them.
    int expectSound(const std::map<Text, Text>& mails, int certain)
    {
        int back = 0;
        for (int number = 0; number < kMails; ++number) {
            const auto at = mails.find(mailOf(number).Subject);
            if (at == mails.end()) continue;
            ++back;
            if (number < certain) {
                EXPECT_TRUE(at->second == textOf(number)) << number;
            }
        }
        return back;
    }
    std::vector<Text> asked;
};

TEST_P(DamageTest, WithTheBakEachMailThatEitherHasComesBackOnce)
{
    const std::string damaged = spoil();
    dbCompress(gDbPath);
    EXPECT_EQ(asked.size(), 1u);
    const auto mails = found();
    const int back = expectSound(mails, kInBak);
    RecordProperty("WithBak", back);
    EXPECT_GE(back, GetParam().withBak);
    EXPECT_LE(mails.size(), std::size_t{kMails});
    EXPECT_EQ(readBytes(file("Tolvek.Mdb.Damaged")), damaged);
    EXPECT_EQ(rows(u"tblTolvek", gDbPath + u".Bak"), static_cast<int>(mails.size()));
}

TEST_P(DamageTest, WhereTheBakIsRuinedTheDamagedFileAloneGivesWhatItHas)
{
    const std::string damaged = spoil();
    writeBytes(file("Tolvek.Mdb.Bak"), "ruined");
    dbCompress(gDbPath);
    EXPECT_EQ(asked.size(), GetParam().alone > 0 ? 1u : 2u);
    if (GetParam().alone > 0) {
        const int back = expectSound(found(), 0);
        RecordProperty("Alone", back);
        EXPECT_GE(back, GetParam().alone);
    }
    EXPECT_EQ(readBytes(file("Tolvek.Mdb.Damaged")), damaged);
    EXPECT_EQ(readBytes(file("Tolvek.Mdb.Damaged2")), "ruined");
}

INSTANTIATE_TEST_SUITE_P(Kinds, DamageTest, ::testing::ValuesIn(kDamages),
                         [](const auto& damage) { return std::string(damage.param.name); });

}
}
