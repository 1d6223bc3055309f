#include "letters/letter_cache.h"

#include "letters_fixture.h"
#include "platform/system/test_hooks.h"

namespace tolvek::test {
namespace {

class LetterCacheTest : public LettersFixture {
protected:
    std::shared_ptr<const LetterFile> read() const { return readLetterFile(live(), &cache_); }
    Path cached() const
    {
        const auto names = fileNames(folder / "cache");
        return names.size() == 1 ? folder / "cache" / names.front() : Path();
    }
    static Lines subjectsIn(const LetterFile& file)
    {
        Lines subjects;
        for (const LetterRow& row : file.rows())
            subjects.push_back(toUtf8(file.field(row, kSubject)));
        return subjects;
    }

    LetterCache cache_{folder / "cache"};
};

TEST_F(LetterCacheTest, HoldsTheSameAsMemory)
{
    addFriend(u"hanako@example.jp", u"はなちゃん", u"モモ");
    for (int number = 0; number < 20; ++number)
        store(
            with(u"件名" + decimal(number), Text(20000, u'本'), u"200001" + decimal(10 + number)));
    const auto memory = readLetterFile(live());
    EXPECT_FALSE(memory->isMapped());
    for (int round = 0; round < 2; ++round) {
        const auto mapped = read();
        ASSERT_TRUE(mapped->isMapped());
        ASSERT_EQ(mapped->rows().size(), memory->rows().size());
        for (std::size_t row = 0; row < memory->rows().size(); ++row) {
            const LetterRow &a = memory->rows()[row], &b = mapped->rows()[row];
            EXPECT_EQ(memory->field(a, kText), mapped->field(b, kText));
            EXPECT_EQ(memory->field(a, kSubject), mapped->field(b, kSubject));
            EXPECT_EQ(memory->folded(a, FoldedPart::All), mapped->folded(b, FoldedPart::All));
            EXPECT_EQ(memory->folded(a, FoldedPart::Sender),
                      u"花子" + Text(1, u'\0') + u"hanako@example.jp");
            EXPECT_EQ(mapped->folded(b, FoldedPart::Receiver),
                      u"太郎" + Text(1, u'\0') + u"taro@example.jp");
            EXPECT_EQ(a.identity, b.identity);
        }
        ASSERT_EQ(mapped->friends().size(), 1u);
        EXPECT_EQ(mapped->friends()[0].name, u"はなちゃん");
        mapped->release();
        EXPECT_EQ(mapped->field(mapped->rows()[0], kSubject), u"件名0");
    }
}

TEST_F(LetterCacheTest, IsUsedWithoutReadingTheArchive)
{
    store(with(u"a", u"b"));
    read();
    const auto stamp = readBytes(cached());
    std::vector<Path> opened;
    hooks::setFileProbe([&](FileOperation operation, const Path& path) {
        if (operation == FileOperation::Open) opened.push_back(path.filename());
    });
    EXPECT_EQ(subjectsIn(*read()), Lines{"a"});
    hooks::setFileProbe({});
    EXPECT_EQ(std::count(opened.begin(), opened.end(), Path("Tolvek.Mdb")), 0);
    EXPECT_EQ(readBytes(cached()), stamp);
}

TEST_F(LetterCacheTest, IsMadeAgainForAChangedArchive)
{
    store(with(u"a", u"b"));
    read();
    store(with(u"c", u"d", u"20010101"));
    EXPECT_EQ(subjectsIn(*read()), (Lines{"a", "c"}));
    EXPECT_FALSE(cached().empty()) << "one file for one archive";
}

TEST_F(LetterCacheTest, MayBeDeletedWhileItIsInUse)
{
    store(with(u"a", u"b"));
    const auto letters = read();
    removeFile(cached());
    EXPECT_EQ(subjectsIn(*letters), Lines{"a"});
    EXPECT_EQ(subjectsIn(*read()), Lines{"a"});
}

TEST_F(LetterCacheTest, ADamagedFileIsMadeAgain)
{
    store(with(u"a", u"b"));
    read();
    const std::string whole = readBytes(cached());
    for (std::size_t length = 0; length < whole.size(); length += 37) {
        writeBytes(cached(), whole.substr(0, length));
        EXPECT_EQ(subjectsIn(*read()), Lines{"a"}) << length;
    }
    // Every byte but those of the texts.
    for (std::size_t at = whole.size() / 4; at < whole.size(); at += 3) {
        std::string changed = whole;
        changed[at] = static_cast<char>(changed[at] ^ 0x55);
        writeBytes(cached(), changed);
        EXPECT_EQ(read()->rows().size(), 1u) << at;
    }
}

TEST_F(LetterCacheTest, IsDoneWithoutWhereItCannotBeWritten)
{
    store(with(u"a", u"b"));
    hooks::setFileProbe([&](FileOperation operation, const Path& path) {
        if (operation == FileOperation::Create && path.parent_path().filename() == "cache")
            throw std::system_error(std::make_error_code(std::errc::no_space_on_device));
    });
    const auto letters = read();
    hooks::setFileProbe({});
    EXPECT_FALSE(letters->isMapped());
    EXPECT_EQ(subjectsIn(*letters), Lines{"a"});
    EXPECT_TRUE(entryNames(folder / "cache").empty());
}

TEST_F(LetterCacheTest, BelongsToItsUserOnly)
{
    read();
    const auto perms = [](const Path& path) { return std::filesystem::status(path).permissions(); };
    EXPECT_EQ(perms(folder / "cache"), std::filesystem::perms::owner_all);
    EXPECT_EQ(perms(cached()),
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
}

// Its mails may have been deleted on purpose.
TEST_F(LetterCacheTest, OfAnArchiveThatIsGoneIsRemoved)
{
    read();
    cache_.removeOrphans();
    EXPECT_FALSE(cached().empty());
    removeFile(live());
    cache_.removeOrphans();
    EXPECT_TRUE(entryNames(folder / "cache").empty());
}

}
}
