#include "platform/dao/general_order.h"

#include "support/temp_folder.h"
#include "support/test_data.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <unicode/uchar.h>
#include <vector>

namespace tolvek::test {
namespace {

int sign(int value)
{
    return (value > 0) - (value < 0);
}

// The escapes in the table: \\, \t, \xNN.
Text unescaped(const std::string& field)
{
    std::string bytes;
    for (std::size_t i = 0; i < field.size(); ++i) {
        if (field[i] != '\\') {
            bytes += field[i];
        } else if (field[++i] == 'x') {
            bytes += static_cast<char>(std::stoi(field.substr(i + 1, 2), nullptr, 16));
            i += 2;
        } else {
            bytes += field[i] == 't' ? '\t' : field[i];
        }
    }
    return fromUtf8(bytes);
}

struct Ranked {
    int rank;
    Text text;
    std::string shown;
};

std::vector<Ranked> rankedTexts()
{
    std::istringstream lines(readBytes(TOLVEK_TEST_DATA "/general_order.tsv"));
    std::vector<Ranked> all;
    for (std::string line; std::getline(lines, line);) {
        if (line.empty() || line[0] == '#') continue;
        const std::size_t tab = line.find('\t');
        all.push_back({std::stoi(line.substr(0, tab)), unescaped(line.substr(tab + 1)), line});
    }
    return all;
}

TEST(GeneralOrderTest, EveryPairOfTheTableStandsInItsOrder)
{
    const auto all = rankedTexts();
    ASSERT_GT(all.size(), 300u);
    for (const Ranked& a : all)
        for (const Ranked& b : all) {
            const int byRank = sign(a.rank - b.rank);
            EXPECT_EQ(sign(generalKey(a.text).compare(generalKey(b.text))), byRank)
                << a.shown << " / " << b.shown;
            EXPECT_TRUE(byRank == 0 || sign(compareGeneral(a.text, b.text)) == byRank)
                << a.shown << " / " << b.shown;
        }
}

struct Key {
    Text text;
    std::string key;
};

// Hiragana か has the primary 7F 0A, x has 91; a bare mark is a byte of its own.
TEST(GeneralOrderTest, AMarkWithoutACharacterIsAByteBeforeTheSecondaries)
{
    const std::string kana = "\x01\x01\xFF\x02\x80\xFF\x80";
    const Key keys[] = {
        {u"\u3099", std::string("\x01\x01\0", 3)},
        {u"\u309A\u3099", std::string("\x01\x03\0", 3)},
        {u"\u3099か", "\x7F\x0A\x01\x01" + kana + '\0'},
        {u"\u3099が", "\x7F\x0A\x01\x01\x03" + kana + '\0'},
        {u"\u3099-", std::string("\x01\x01\x01\x01\x01\x80\x07\x06\x82\0", 10)},
        {u"か\u3099", "\x7F\x0A\x01\x03" + kana + '\0'},
    };
    for (const auto& [text, key] : keys)
        EXPECT_EQ(generalKey(text), key) << toUtf8(text);
}

struct Pair {
    Text a, b;
    bool equal;
};

TEST(GeneralOrderTest, EqualityKnowsNeitherCaseNorTrailingBlanks)
{
    const Pair pairs[] = {
        {u"abc", u"abc  ", true},   {u"", u" ", true},         {u"abc", u"ABC", true},
        {u"Ａ", u"ａ", true},       {u"a", u"ａ", false},      {u"あ", u"ア", false},
        {u"ア", u"ｱ", false},       {u"é", u"e", false},       {u"é", u"É", true},
        {u"つ", u"っ", false},      {u"か", u"が", false},     {u" a", u"a", false},
        {u"a b", u"ab", false},     {u"a", u"a\u3000", false}, {u"co-op", u"coop", false},
        {u"ΑΩ", u"αω", true},       {u"Я", u"я", true},        {u"a-b", u"ab-", false},
        {u"can't", u"cant", false}, {u"a\u0001", u"a", false}, {Text(u"a\0", 2), u"a", false}};
    for (const Pair& pair : pairs)
        EXPECT_EQ(compareGeneral(pair.a, pair.b) == 0, pair.equal)
            << toUtf8(pair.a) << " / " << toUtf8(pair.b);
}

TEST(GeneralOrderTest, NeighboursAsTheyAreKnown)
{
    const Text orders[][6] = {{u"coop", u"-coop", u"c-oop", u"co-op", u"coop-", u"coopa"},
                              {u"taro.y", u"taro@x", u"taro_y", u"taroy", u"taro-y", u"tarp"},
                              {u"カア", u"カー", u"カイ", u"佐佐木", u"佐々木", u"佐木"},
                              {u" ", u"!", u"+", u"1", u"a", u"α"},
                              {u"α", u"а", u"あ", u"亜", u"龥", u"ー"}};
    for (const auto& order : orders)
        for (int i = 0; i + 1 < 6; ++i)
            EXPECT_LT(compareGeneral(order[i], order[i + 1]), 0)
                << toUtf8(order[i]) << toUtf8(order[i + 1]);
}

Text foldedWithoutBlanks(Text text)
{
    while (!text.empty() && text.back() == u' ')
        text.pop_back();
    for (char16_t& c : text)
        c = static_cast<char16_t>(u_foldCase(c, U_FOLD_CASE_DEFAULT));
    return text;
}

std::vector<Text> randomTexts(std::size_t count)
{
    std::mt19937 random(20000215);
    const TextView pool =
        u"aAbBzZ09 "
        u"-'.@_"
        u"\u0001éÉeèＡａ、かがカガｶﾞっつッーｰ々ゝヽヾァア゛\u0300\u0301一丁佐木Ω😀\u212AkKſsS\uFB03";
    std::vector<Text> texts;
    for (std::size_t i = 0; i < count; ++i) {
        Text text;
        for (std::size_t length = random() % 6; length > 0; --length)
            text +=
                random() % 50 == 0 ? static_cast<char16_t>(random()) : pool[random() % pool.size()];
        texts.push_back(text);
    }
    return texts;
}

TEST(GeneralOrderTest, IsATotalOrderWhoseEqualTextsAreTheFoldedOnes)
{
    const auto texts = randomTexts(300);
    for (const Text& a : texts)
        for (const Text& b : texts) {
            const int order = sign(compareGeneral(a, b));
            ASSERT_EQ(order, -sign(compareGeneral(b, a))) << toUtf8(a) << " / " << toUtf8(b);
            ASSERT_EQ(order == 0, foldedWithoutBlanks(a) == foldedWithoutBlanks(b))
                << toUtf8(a) << " / " << toUtf8(b);
        }
}

TEST(GeneralOrderTest, TheQuickWayAgreesWithTheWholeKeys)
{
    const auto texts = randomTexts(300);
    for (const Text& a : texts)
        for (const Text& b : texts) {
            const int byKey = sign(generalKey(a).compare(generalKey(b)));
            const bool byFolding = byKey == 0 || foldedWithoutBlanks(a) == foldedWithoutBlanks(b);
            ASSERT_TRUE(byFolding || sign(compareGeneral(a, b)) == byKey)
                << toUtf8(a) << " / " << toUtf8(b);
        }
}

TEST(GeneralOrderTest, SortingGivesOneResultWhateverTheStart)
{
    auto texts = randomTexts(400);
    const auto less = [](const Text& a, const Text& b) { return compareGeneral(a, b) < 0; };
    std::stable_sort(texts.begin(), texts.end(), less);
    for (std::size_t i = 0; i < texts.size(); i += 7)
        for (std::size_t j = i; j < texts.size(); ++j)
            ASSERT_LE(compareGeneral(texts[i], texts[j]), 0);
}

TEST(GeneralOrderTest, LongTextsDifferBehindTheKeysEnd)
{
    const Text stem(300, u'a');
    EXPECT_LT(compareGeneral(stem + u"b", stem + u"c"), 0);
    EXPECT_EQ(compareGeneral(stem + u"b", stem + u"B "), 0);
    EXPECT_EQ(generalKey(stem + u"b"), generalKey(stem + u"c"));
}

}
}
