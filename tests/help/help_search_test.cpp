#include "help/help_search.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

HelpBook book()
{
    return HelpBook(
        {{"index.html", "<ul><li><a href=\"a.html\">A</a></li>"
                        "<li><a href=\"b.html\">B</a></li></ul>"},
         {"a.html", "<title>はじめに</title><p>フィルターの話。フィルター。</p>"},
         {"b.html", "<title>フィルター</title><p>条件を書く。</p><p>ガラスの　くつ</p>"}});
}

std::vector<QString> pagesFound(TextView typed)
{
    std::vector<QString> pages;
    for (const HelpHit& hit : searchHelp(book(), typed))
        pages.push_back(hit.page);
    return pages;
}

using Pages = std::vector<QString>;

TEST(HelpSearchTest, APageWithTheWordInItsTitleComesFirst)
{
    EXPECT_EQ(pagesFound(u"フィルター"), (Pages{"b.html", "a.html"}));
}

TEST(HelpSearchTest, CaseWidthAndKindOfKanaDontMatter)
{
    EXPECT_EQ(pagesFound(u"ふぃるたー"), (Pages{"b.html", "a.html"}));
    EXPECT_EQ(pagesFound(u"ﾌｨﾙﾀｰ"), (Pages{"b.html", "a.html"}));
    EXPECT_EQ(pagesFound(u"ｶﾞﾗｽ"), Pages{"b.html"});
}

TEST(HelpSearchTest, AllWordsMustOccur)
{
    EXPECT_EQ(pagesFound(u"フィルター　条件"), Pages{"b.html"});
    EXPECT_EQ(pagesFound(u"フィルター ない"), Pages{});
    EXPECT_EQ(pagesFound(u" 　"), Pages{});
}

TEST(HelpSearchTest, AResultShowsTheLineOfTheFirstPlace)
{
    EXPECT_EQ(searchHelp(book(), u"くつ").at(0).line, "ガラスの　くつ");
}

TEST(HelpSearchTest, TheHeadingIsntRepeatedInAResult)
{
    const HelpBook manual({{"index.html", "<title>目次</title><h1>目次</h1><p>この目次は</p>"}});
    EXPECT_EQ(searchHelp(manual, u"目次").at(0).line, "この目次は");
}

TEST(HelpSearchTest, APlaceIsAsLongAsTheTextThere)
{
    const auto wide = placesOf(u"ｶﾞﾗｽ", u"このガラスは");
    ASSERT_EQ(wide.size(), 1u);
    EXPECT_EQ(wide[0].start, 2);
    EXPECT_EQ(wide[0].length, 3);
    const auto narrow = placesOf(u"ガラス", u"このｶﾞﾗｽは");
    ASSERT_EQ(narrow.size(), 1u);
    EXPECT_EQ(narrow[0].length, 4);
    EXPECT_EQ(placesOf(u"ああ", u"ああああ").size(), 2u);
    EXPECT_TRUE(placesOf(u"", u"a").empty());
}

TEST(HelpSearchTest, OfAMessageTheLongestPartThatThePageHasIsTaken)
{
    const HelpBook manual = book();
    const HelpBook::Page& page = *manual.page("b.html");
    EXPECT_EQ(explainedPart(u"条件\r\n  条件を書く。\r\nほかの、もっと長い行は、ない。", page),
              u"条件を書く。");
    EXPECT_EQ(explainedPart(u"エラー番号： 5\r（条件を書く。）", page), u"条件を書く。");
    EXPECT_EQ(explainedPart(u"'/home/条件'条件を書く", page), u"条件を書く");
    EXPECT_EQ(explainedPart(u"ない。", page), u"");
    EXPECT_EQ(explainedPart(u"条件", page), u""); // too short to mean anything
}

}
}
