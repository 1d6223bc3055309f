#include "letters/export.h"

#include "letters_fixture.h"
#include "platform/system/test_hooks.h"
#include "support/errors.h"

namespace tolvek::test {
namespace {

class ExportTest : public LettersFixture {
protected:
    void SetUp() override
    {
        LettersFixture::SetUp();
        store(with(u"<旅行>", u"a & b\r\n\r\n\"c\"\r\n", u"20010401"));
        store(with(u"花見", u"桜\r\n", u"20020402"));
        all_ = library();
        std::filesystem::create_directory(target("").parent_path());
    }
    void TearDown() override
    {
        all_.reset();
        LettersFixture::TearDown();
    }
    Path target(const std::string& name) const { return folder / "out" / name; }
    bool take(ExportForm form, const std::string& name, const ExportProgress& progress = {}) const
    {
        return exportLetters(*all_, {1, 0}, form, target(name), progress);
    }
    Lines names() const
    {
        auto all = entryNames(folder / "out");
        std::sort(all.begin(), all.end());
        return all;
    }

    std::shared_ptr<const Library> all_;
};

constexpr ExportForm kForms[] = {ExportForm::Mbox, ExportForm::EmlFolder, ExportForm::PlainText,
                                 ExportForm::Html};

TEST_F(ExportTest, AnMboxHasOneEntryForEachLetter)
{
    EXPECT_TRUE(take(ExportForm::Mbox, "all.mbox"));
    const std::string bytes = readBytes(target("all.mbox"));
    EXPECT_TRUE(bytes.starts_with("From hanako@example.jp Sun Apr  1 10:11:12 2001\n"));
    EXPECT_NE(bytes.find("\n\nFrom hanako@example.jp Tue Apr  2 10:11:12 2002\n"),
              std::string::npos);
}

TEST_F(ExportTest, AFolderHasOneMessageForEachLetterInOrder)
{
    EXPECT_TRUE(take(ExportForm::EmlFolder, "all"));
    auto messages = fileNames(target("all"));
    std::sort(messages.begin(), messages.end());
    EXPECT_EQ(messages, (Lines{"000001-20010401-101112.eml", "000002-20020402-101112.eml"}));
}

TEST_F(ExportTest, PlainTextHasHeadingsAndText)
{
    EXPECT_TRUE(take(ExportForm::PlainText, "all.txt"));
    const std::string text = readBytes(target("all.txt"));
    EXPECT_NE(text.find("件名　: <旅行>\n差出人: 花子 <hanako@example.jp>\n"
                        "宛先　: 太郎 <taro@example.jp>\n日時　: 2001/04/01 10:11:12\n\n"
                        "a & b\n\n\"c\"\n"),
              std::string::npos)
        << text;
}

TEST_F(ExportTest, APageHasNoMarkupFromALetterAndNothingFromOutside)
{
    EXPECT_TRUE(take(ExportForm::Html, "all.html"));
    const std::string page = readBytes(target("all.html"));
    EXPECT_NE(page.find("<h2>&lt;旅行&gt;</h2>"), std::string::npos);
    EXPECT_NE(page.find("a &amp; b\n\n&quot;c&quot;\n"), std::string::npos);
    EXPECT_EQ(page.find("http"), std::string::npos);
    EXPECT_TRUE(page.ends_with("</html>\n"));
}

TEST_F(ExportTest, TellsItsProgress)
{
    for (const ExportForm form : kForms) {
        Lines told;
        take(form, "all" + std::to_string(static_cast<int>(form)),
             [&](std::size_t done, std::size_t all) {
                 told.push_back(std::to_string(done) + "/" + std::to_string(all));
                 return true;
             });
        EXPECT_EQ(told, (Lines{"1/2", "2/2"}));
    }
}

TEST_F(ExportTest, ACancelledOneLeavesNothing)
{
    for (const ExportForm form : kForms)
        for (const std::size_t end : {1u, 2u})
            EXPECT_FALSE(
                take(form, "all", [&](std::size_t done, std::size_t) { return done < end; }));
    EXPECT_EQ(names(), Lines{});
}

TEST_F(ExportTest, ACancelledOneLeavesTheOlderFile)
{
    writeBytes(target("all.mbox"), "older");
    EXPECT_FALSE(
        take(ExportForm::Mbox, "all.mbox", [](std::size_t, std::size_t) { return false; }));
    EXPECT_EQ(readBytes(target("all.mbox")), "older");
    EXPECT_TRUE(take(ExportForm::Mbox, "all.mbox"));
    EXPECT_NE(readBytes(target("all.mbox")), "older");
}

// At each operation in turn the disk is full.
TEST_F(ExportTest, AFailedOneLeavesNothingThatLooksFinished)
{
    for (const ExportForm form : kForms) {
        int fatal = 1;
        for (;; ++fatal) {
            int operations = 0;
            hooks::setFileProbe([&](FileOperation operation, const Path& path) {
                const bool counts = path.string().find("/out") != std::string::npos &&
                                    operation != FileOperation::Open;
                if (counts && ++operations == fatal)
                    throw std::system_error(std::make_error_code(std::errc::no_space_on_device));
            });
            const int error = errorOf([&] { take(form, "all"); });
            hooks::setFileProbe({});
            if (operations < fatal) break;
            EXPECT_EQ(error, 61) << fatal;
            // The last step fails after the file is complete and in its place.
            const Lines left = names();
            EXPECT_TRUE(left.empty() || left == Lines{"all"}) << fatal;
            std::filesystem::remove_all(target("all"));
        }
        EXPECT_GT(fatal, 3);
        std::filesystem::remove_all(target("all"));
    }
}

TEST_F(ExportTest, AFolderNeverReplacesAnything)
{
    std::filesystem::create_directory(target("all"));
    EXPECT_EQ(errorOf([&] { take(ExportForm::EmlFolder, "all"); }), 58);
    EXPECT_EQ(names(), Lines{"all"});
    EXPECT_TRUE(entryNames(target("all")).empty());
}

TEST_F(ExportTest, SaysWhatIsMissing)
{
    for (const ExportForm form : kForms)
        EXPECT_NE(errorOf([&] { take(form, "none/all"); }), 0);
}

}
}
