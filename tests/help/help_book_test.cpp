#include "help/help_book.h"

#include "support/temp_folder.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

const HelpItems kManual{
    {"index.html", "<title>目次のページ</title><h1>目次</h1><h2>はじめに</h2><ul>"
                   "<li><a href=\"a.html\">あ</a></li></ul><h2>つぎ</h2><ul>"
                   "<li><a href=\"b.html\">い</a></li></ul><p><a href=\"c.html\">外</a></p>"},
    {"terms.html", "<h2>あ行</h2><ul><li><a href=\"a.html#x\">言葉</a></li></ul>"},
    {"a.html", "<title>エー</title><p>本文の A</p>"},
    {"b.html", "<title>ビー</title>"},
};

TEST(HelpBookTest, TheContentsAreTheLinksInListsUnderTheirHeadings)
{
    const HelpBook book(kManual);
    std::vector<std::pair<QString, QString>> lines;
    for (const HelpLink& link : book.contents())
        lines.emplace_back(link.title, link.address);
    EXPECT_EQ(lines, (std::vector<std::pair<QString, QString>>{
                         {"はじめに", ""}, {"あ", "a.html"}, {"つぎ", ""}, {"い", "b.html"}}));
    ASSERT_EQ(book.terms().size(), 2u);
    EXPECT_EQ(book.terms()[1].address, "a.html#x");
}

TEST(HelpBookTest, APageHasItsTitleAndItsText)
{
    const HelpBook book(kManual);
    ASSERT_NE(book.page("a.html"), nullptr);
    EXPECT_EQ(book.page("a.html")->title, "エー");
    EXPECT_EQ(book.page("a.html")->text, u"本文の A");
    EXPECT_EQ(book.page("c.html"), nullptr);
    EXPECT_EQ(book.pages().size(), 3u);
}

TEST(HelpBookTest, OnlyAWholeHelpFileWithContentsIsRead)
{
    const TempFolder folder;
    EXPECT_FALSE(HelpBook::read(folder / "none"));
    EXPECT_FALSE(HelpBook::read(folder.path()));
    writeBytes(folder / "other", "something else");
    EXPECT_FALSE(HelpBook::read(folder / "other"));
    writeBytes(folder / "empty", packedHelp({{"a.html", ""}}).toStdString());
    EXPECT_FALSE(HelpBook::read(folder / "empty"));
    writeBytes(folder / "whole", packedHelp(kManual).toStdString());
    EXPECT_TRUE(HelpBook::read(folder / "whole"));
}

}
}
