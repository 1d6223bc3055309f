#include "letters/query.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

// A query as one line: "field:word", "-" before what is excluded.
std::string shown(TextView typed)
{
    std::string line;
    const LetterQuery query = parseQuery(typed);
    for (const Term& term : query.terms) {
        if (!line.empty()) line += '|';
        if (term.excluded) line += '-';
        if (term.field == TermField::From) line += "from:";
        if (term.field == TermField::To) line += "to:";
        line += toUtf8(term.folded);
    }
    for (const Months& months : query.years)
        line += " [" + std::to_string(months.first) + "-" + std::to_string(months.last) + "]";
    for (const Months& months : query.excludedYears)
        line += " -[" + std::to_string(months.first) + "-" + std::to_string(months.last) + "]";
    return line;
}

TEST(QueryTest, WordsAreSeparatedByBlanksOfBothWidths)
{
    EXPECT_EQ(shown(u" 旅行　日記  abc "), "旅行|日記|abc");
    EXPECT_EQ(shown(u""), "");
    EXPECT_EQ(shown(u"　 "), "");
}

TEST(QueryTest, QuotationMarksKeepBlanks)
{
    EXPECT_EQ(shown(u"\"星の 観察\" 旅"), "星の 観察|旅");
    EXPECT_EQ(shown(u"“a b” c"), "a b|c");
    EXPECT_EQ(shown(u"＂ａ ｂ＂"), "a b");
    EXPECT_EQ(shown(u"\"still being typed"), "still being typed");
    EXPECT_EQ(shown(u"\"a\"b"), "a|b") << "the word after the mark isn't lost";
}

TEST(QueryTest, AMinusExcludes)
{
    EXPECT_EQ(shown(u"旅行 -宣伝 －広告 -\"a b\""), "旅行|-宣伝|-広告|-a b");
    EXPECT_EQ(shown(u"e-mail"), "e-mail");
}

TEST(QueryTest, LabelsAreKnownInBothLanguagesAndWidths)
{
    EXPECT_EQ(shown(u"from:はな to:taro@example.com"), "from:はな|to:taro@example.com");
    EXPECT_EQ(shown(u"差出人：はな　宛先:たろう"), "from:はな|to:たろう");
    EXPECT_EQ(shown(u"ＦＲＯＭ：はな Subject:x"), "from:はな|subject:x");
    EXPECT_EQ(shown(u"from:\"はな ちゃん\" -to:x"), "from:はな ちゃん|-to:x");
}

TEST(QueryTest, YearsAreYearsMonthsOrRanges)
{
    EXPECT_EQ(shown(u"year:2001"), " [200100-200199]");
    EXPECT_EQ(shown(u"年：２００１"), " [200100-200199]");
    EXPECT_EQ(shown(u"year:2001年"), " [200100-200199]");
    EXPECT_EQ(shown(u"year:200105"), " [200105-200105]");
    EXPECT_EQ(shown(u"year:2001/5 年:2001年5月"), " [200105-200105] [200105-200105]");
    EXPECT_EQ(shown(u"year:2001-05"), " [200105-200105]");
    EXPECT_EQ(shown(u"year:1999-2001"), " [199900-200199]");
    EXPECT_EQ(shown(u"year:1999～2001"), " [199900-200199]");
    EXPECT_EQ(shown(u"year:2001-"), " [200100-999999]");
    EXPECT_EQ(shown(u"year:-2001"), " [0-200199]");
    EXPECT_EQ(shown(u"-year:2001"), " -[200100-200199]");
}

TEST(QueryTest, WhatIsHalfTypedIsIgnored)
{
    for (const TextView typed : {u"from:", u"year:", u"year:20", u"-", u"\"", u"-\"", u"差出人："})
        EXPECT_EQ(shown(typed), "") << toUtf8(typed);
}

TEST(QueryTest, WhatIsNoYearIsAWord)
{
    EXPECT_EQ(shown(u"year:abc"), "year:abc");
    EXPECT_EQ(shown(u"year:20010"), "year:20010");
    EXPECT_EQ(shown(u"year:2001/13"), "year:2001/13");
}

TEST(QueryTest, AnExactQueryKeepsItsForms)
{
    const LetterQuery query = parseQuery(u"ＡＢ カナ", true);
    ASSERT_EQ(query.terms.size(), 2u);
    EXPECT_EQ(query.terms[0].folded, u"ＡＢ");
    EXPECT_EQ(query.terms[1].folded, u"カナ");
}

using Spans = std::vector<Span>;

TEST(HitsTest, LeadBackToTheTextAsStored)
{
    EXPECT_EQ(hitsIn(u"xｶﾞｯｺｳ と がっこう", parseQuery(u"ガッコウ")), (Spans{{1, 5}, {9, 4}}));
    EXPECT_EQ(hitsIn(u"㈱山田", parseQuery(u"株")), (Spans{{0, 1}}));
    EXPECT_EQ(hitsIn(u"旅\r\n行", parseQuery(u"旅行")), (Spans{{0, 4}}));
}

TEST(HitsTest, DoNotOverlapAndAreSorted)
{
    EXPECT_EQ(hitsIn(u"abcabc", parseQuery(u"bc ab")), (Spans{{0, 3}, {3, 3}}));
    EXPECT_EQ(hitsIn(u"aaa", parseQuery(u"a")), (Spans{{0, 1}, {1, 1}, {2, 1}}));
}

TEST(HitsTest, ExcludedWordsAndThoseOfOtherFieldsAreNotMarked)
{
    const LetterQuery query = parseQuery(u"a from:b to:c -d");
    EXPECT_EQ(hitsIn(u"abcd", query), (Spans{{0, 1}}));
    EXPECT_EQ(hitsIn(u"abcd", query, TermField::From), (Spans{{0, 1}, {1, 1}}));
    EXPECT_EQ(hitsIn(u"abcd", query, TermField::To), (Spans{{0, 1}, {2, 1}}));
}

TEST(HitsTest, AnExactQueryMarksOnlyTheSameForm)
{
    EXPECT_EQ(hitsIn(u"カナ かな", parseQuery(u"かな", true)), (Spans{{3, 2}}));
}

TEST(MatchedLineTest, IsTheFirstLineWithAHit)
{
    const MatchedLine found = matchedLine(u"一行目\r\n二行目の旅行\r\n旅行", parseQuery(u"旅行"));
    EXPECT_EQ(found.line, u"二行目の旅行");
    EXPECT_EQ(found.marks, (Spans{{4, 2}}));
}

TEST(MatchedLineTest, WithoutAHitIsTheFirstLineWithText)
{
    EXPECT_EQ(matchedLine(u"\r\n \r\n本文\r\n次", parseQuery(u"")).line, u"本文");
    EXPECT_EQ(matchedLine(u"\r\n", parseQuery(u"a")).line, u"");
    EXPECT_EQ(matchedLine(u"", parseQuery(u"a")).line, u"");
}

TEST(MatchedLineTest, IsCutAroundTheHit)
{
    const Text text = Text(300, u'あ') + u"旅行" + Text(300, u'い');
    const MatchedLine found = matchedLine(text, parseQuery(u"旅行"), 40);
    EXPECT_EQ(found.line.size(), 40u);
    ASSERT_EQ(found.marks.size(), 1u);
    EXPECT_EQ(found.line.substr(found.marks[0].begin, found.marks[0].length), u"旅行");
}

TEST(MatchedLineTest, AHitOverTwoLinesIsMarkedToTheEndOfTheFirst)
{
    const MatchedLine found = matchedLine(u"この旅\r\n行は", parseQuery(u"旅行"));
    EXPECT_EQ(found.line, u"この旅");
    EXPECT_EQ(found.marks, (Spans{{2, 1}}));
}

}
}
