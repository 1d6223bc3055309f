#include "letters/fold.h"

#include "letters/old_kanji.h"

#include <gtest/gtest.h>

#include <set>

namespace tolvek::test {
namespace {

struct Pair {
    TextView one, other;
};

class FoldTest : public testing::TestWithParam<Pair> {};

TEST_P(FoldTest, BothFormsAreOne)
{
    EXPECT_EQ(folded(GetParam().one), folded(GetParam().other));
}

INSTANTIATE_TEST_SUITE_P(
    Forms, FoldTest,
    testing::Values(Pair{u"ABC", u"abc"}, Pair{u"ＡＢＣ１２３", u"abc123"},
                    Pair{u"カタカナ", u"かたかな"}, Pair{u"ｶﾀｶﾅ", u"かたかな"},
                    Pair{u"ｶﾞｷﾞﾊﾟﾋﾟ", u"がぎぱぴ"}, Pair{u"か゛", u"が"},
                    Pair{u"ウ゛ァイオリン", u"ヴァイオリン"}, Pair{u"か\u3099", u"が"},
                    Pair{u"㈱山田", u"(株)山田"}, Pair{u"①", u"1"}, Pair{u"髙橋", u"高橋"},
                    Pair{u"山﨑", u"山崎"}, Pair{u"圖書舘", u"図書館"}, Pair{u"\uFA19戸", u"神戸"},
                    Pair{u"渡邊", u"渡辺"}, Pair{u"渡邉", u"渡辺"}, Pair{u"𠮷田", u"吉田"},
                    Pair{u"don’t", u"don't"}, Pair{u"〜", u"～"}, Pair{u"１０−２０", u"10-20"},
                    Pair{u"a　b", u"a b"}, Pair{u"a \r\n\t b", u"a b"}, Pair{u"ﾗｰﾒﾝ", u"らーめん"},
                    Pair{u"Ａ｜Ｂ", u"a|b"}, Pair{u"ヽヾ", u"ゝゞ"}));

TEST(FoldTest, SomeDifferencesStay)
{
    EXPECT_NE(folded(u"か"), folded(u"が"));
    EXPECT_NE(folded(u"つ"), folded(u"っ"));
    EXPECT_NE(folded(u"斉藤"), folded(u"斎藤"));
}

TEST(FoldTest, ALineEndInsideAJapaneseWordIsNothing)
{
    EXPECT_EQ(folded(u"旅\r\n行"), u"旅行");
    EXPECT_EQ(folded(u"two\r\nwords"), u"two words");
    EXPECT_EQ(folded(u"旅\r\n\r\n行"), u"旅 行");
    EXPECT_EQ(folded(u"旅\r\n　行"), u"旅 行");
}

TEST(FoldTest, BlanksAtBothEndsAreNothing)
{
    EXPECT_EQ(folded(u"　a \r\n"), u"a");
    EXPECT_EQ(folded(u" \r\n"), u"");
    EXPECT_EQ(folded(u""), u"");
}

TEST(FoldTest, ALoneMarkOrHalfACharacterIsBorne)
{
    folded(u"\u3099");
    folded(TextView(u"\xD842", 1));
    folded(TextView(u"a\xDFB7", 2));
    folded(u" ﾞ ﾟ");
    EXPECT_EQ(folded(TextView(u"a\0b", 3)), Text(u"a\0b", 3));
}

TEST(FoldTest, AppendsBehindWhatIsThere)
{
    Text text = u"か";
    appendFolded(text, u"゛A");
    EXPECT_EQ(text.substr(0, 1), u"か") << "a mark doesn't join another field's text";
    EXPECT_EQ(text.back(), u'a');
}

// Each folded unit leads back to the units that it came from.
TEST(FoldTest, KnowsWhereItsUnitsCameFrom)
{
    const FoldedText form = foldedWithOrigin(u"aｶﾞ㈱　　b");
    EXPECT_EQ(form.text, u"aが(株) b");
    EXPECT_EQ(form.begin, (std::vector<std::uint32_t>{0, 1, 3, 3, 3, 4, 6}));
    EXPECT_EQ(form.end, (std::vector<std::uint32_t>{1, 3, 4, 4, 4, 6, 7}));
}

TEST(FoldTest, WithOriginIsTheSameText)
{
    for (const TextView text :
         {u"ｶﾞ か゛ \r\n㈱ Ａ゛", u"旅\r\n行 two\r\n words", u"", u"\u3099゛"})
        EXPECT_EQ(foldedWithOrigin(text).text, folded(text));
}

TEST(OldKanjiTest, AreInPairsWithoutChains)
{
    std::set<char16_t> from, to;
    const char16_t* pair = kOldKanji;
    for (; *pair != 0; pair += 2) {
        ASSERT_NE(pair[1], 0) << "half a pair";
        EXPECT_NE(pair[0], pair[1]);
        EXPECT_TRUE(from.insert(pair[0]).second) << "twice: " << std::hex << +pair[0];
        to.insert(pair[1]);
    }
    for (const char16_t form : to)
        EXPECT_FALSE(from.contains(form)) << std::hex << +form;
    EXPECT_GT(from.size(), 350u);
}

}
}
