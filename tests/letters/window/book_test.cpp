#include "letters/window/book.h"

#include "letters/letters_fixture.h"
#include "platform/system/test_hooks.h"

#include <QBuffer>
#include <QPdfWriter>

#include <numeric>

namespace tolvek::test {
namespace {

class BookTest : public LettersFixture {
protected:
    void SetUp() override
    {
        LettersFixture::SetUp();
        archive("unused"); // the empty archive is remembered before letters are stored
    }
    // `lines` lines of text each.
    void givenLetters(const char* year, int count, int lines = 3, bool sent = false)
    {
        Text text;
        for (int line = 0; line < lines; ++line)
            text += u"今日は海まで歩きました。" + decimal(line) + u"\r\n";
        for (int n = 0; n < count; ++n) {
            Mail made = with(u"手紙 " + decimal(n), text, fromUtf8(year) + u"0215");
            made.HMS = u"1011" + Text(n < 10 ? u"0" : u"") + decimal(n);
            made.SndRcvFlag = sent;
            store(made);
        }
    }
    static std::vector<LetterId> oldestFirst(const Library& library)
    {
        std::vector<LetterId> letters(library.size());
        std::iota(letters.rbegin(), letters.rend(), 0u);
        return letters;
    }
    BookPlan made(const BookSettings& settings = {})
    {
        const auto all = library();
        BookPlan plan;
        EXPECT_TRUE(writeBook(*all, oldestFirst(*all), settings, book(), {}, &plan));
        return plan;
    }
    Path book() const { return folder / "book.pdf"; }
    int pagesInFile() const
    {
        const std::string bytes = readBytes(book());
        int pages = 0;
        for (std::size_t at = 0; (at = bytes.find("/Type /Page\n", at)) != std::string::npos; ++at)
            ++pages;
        return pages;
    }
};

TEST_F(BookTest, HasATitlePageContentsAndAChapterForEachYear)
{
    givenLetters("1999", 2);
    givenLetters("2001", 3);
    givenLetters("2002", 1);
    const BookPlan plan = made();
    ASSERT_EQ(plan.chapters.size(), 3u);
    EXPECT_EQ(plan.chapters[0].year, 1999);
    EXPECT_EQ(plan.chapters[0].page, 3) << "after title page and contents";
    EXPECT_EQ(plan.chapters[1].received, 3u);
    EXPECT_EQ(plan.chapters[1].page, 4) << "each chapter begins a page";
    EXPECT_EQ(plan.chapters[2].page, 5);
    EXPECT_EQ(plan.pages, 5);
    EXPECT_EQ(pagesInFile(), 5);
    EXPECT_EQ(readBytes(book()).substr(0, 5), "%PDF-");
}

TEST_F(BookTest, PaintsAsManyPagesAsItHasMeasured)
{
    givenLetters("1999", 20, 30);
    givenLetters("2001", 20, 30, true);
    const BookPlan plan = made();
    EXPECT_GT(plan.pages, 20);
    EXPECT_EQ(pagesInFile(), plan.pages);
    EXPECT_EQ(plan.chapters[1].sent, 20u);
    EXPECT_GT(plan.chapters[1].page, plan.chapters[0].page + 5);
}

TEST_F(BookTest, LargerPaperTakesFewerPages)
{
    givenLetters("1999", 10, 30);
    const int small = made({BookPaper::A5, QStringLiteral("本")}).pages;
    const int large = made({BookPaper::A4, QStringLiteral("本")}).pages;
    EXPECT_LT(large, small);
    EXPECT_NE(readBytes(book()).find("/MediaBox [0 0 595"), std::string::npos);
}

TEST_F(BookTest, LettersWithoutAYearComeLast)
{
    givenLetters("1999", 1);
    Mail odd = with(u"いつ", u"x", u"x");
    store(odd);
    const BookPlan plan = made();
    ASSERT_EQ(plan.chapters.size(), 2u);
    EXPECT_EQ(plan.chapters[1].year, 0);
}

TEST_F(BookTest, ACancelledOneLeavesNothing)
{
    givenLetters("1999", 5);
    const auto all = library();
    writeBytes(book(), "an older book");
    const std::size_t files = fileNames(folder.path()).size();
    for (const std::size_t at : {1u, 4u, 5u, 6u, 10u}) {
        const bool complete = writeBook(*all, oldestFirst(*all), {}, book(),
                                        [=](std::size_t done, std::size_t) { return done < at; });
        EXPECT_FALSE(complete) << at;
        EXPECT_EQ(readBytes(book()), "an older book");
        EXPECT_EQ(fileNames(folder.path()).size(), files);
    }
}

TEST_F(BookTest, AFailedOneLeavesNothing)
{
    givenLetters("1999", 2);
    const auto all = library();
    EXPECT_ANY_THROW(writeBook(*all, oldestFirst(*all), {}, folder / "none" / "book.pdf"));
    EXPECT_FALSE(std::filesystem::exists(folder / "none"));
    hooks::setFileProbe([](FileOperation operation, const Path&) {
        if (operation == FileOperation::Flush)
            throw std::system_error(std::make_error_code(std::errc::no_space_on_device));
    });
    const std::size_t files = fileNames(folder.path()).size();
    EXPECT_ANY_THROW(writeBook(*all, oldestFirst(*all), {}, book()));
    hooks::setFileProbe({});
    EXPECT_EQ(fileNames(folder.path()).size(), files);
}

// The toolkit's writer says nothing of it.
TEST_F(BookTest, ADiskThatBecomesFullIsAFailureAndLeavesNothing)
{
    givenLetters("1999", 20, 30);
    const auto all = library();
    const std::size_t files = fileNames(folder.path()).size();
    hooks::setFileProbe([written = 0](FileOperation operation, const Path&) mutable {
        if (operation == FileOperation::Write && ++written > 3)
            throw std::system_error(std::make_error_code(std::errc::no_space_on_device));
    });
    try {
        writeBook(*all, oldestFirst(*all), {}, book());
        ADD_FAILURE();
    } catch (const std::system_error& failure) {
        EXPECT_EQ(failure.code(), std::errc::no_space_on_device);
    }
    hooks::setFileProbe({});
    EXPECT_EQ(fileNames(folder.path()).size(), files);
}

TEST_F(BookTest, OddTextsAreSet)
{
    store(with(u"", u"", u"19990101"));
    store(with(Text(100, u'長'), Text(3000, u'x') + u"\r\n" + Text(2000, u'あ'), u"19990102"));
    store(with(u"a", u"\x0001\xD800\x2028\t|\r\n\r\n\r\n  \r\n", u"19990103"));
    EXPECT_GE(made().pages, 3);
}

TEST_F(BookTest, APrintHasTheLettersAlone)
{
    givenLetters("1999", 20, 30);
    const auto all = library();
    QBuffer paper;
    ASSERT_TRUE(paper.open(QIODevice::WriteOnly));
    QPdfWriter printer(&paper);
    std::size_t steps = 0;
    EXPECT_TRUE(printLetters(*all, oldestFirst(*all), printer,
                             [&](std::size_t done, std::size_t) { return done == ++steps; }));
    EXPECT_EQ(steps, 20u);
    EXPECT_GT(paper.data().count("/Type /Page\n"), 5);
    EXPECT_FALSE(printLetters(*all, oldestFirst(*all), printer,
                              [](std::size_t, std::size_t) { return false; }));
}

TEST_F(BookTest, ProgressCountsBothPasses)
{
    givenLetters("1999", 3);
    const auto all = library();
    std::vector<std::size_t> steps;
    writeBook(*all, oldestFirst(*all), {}, book(), [&](std::size_t done, std::size_t whole) {
        EXPECT_EQ(whole, 6u);
        steps.push_back(done);
        return true;
    });
    EXPECT_EQ(steps, (std::vector<std::size_t>{1, 2, 3, 4, 5, 6}));
}

}
}
