#include "platform/runtime/codepage932.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

struct Row {
    Text text;
    std::string bytes;
};

std::string doubleByte(int lead, int trail)
{
    return {static_cast<char>(lead), static_cast<char>(trail)};
}

template <class Action> void forEachDoubleByte(Action&& action)
{
    for (int lead = 0x81; lead <= 0xFC; ++lead)
        for (int trail = 0x40; trail <= 0xFC; ++trail)
            if ((lead < 0xA0 || lead > 0xDF) && trail != 0x7F) action(doubleByte(lead, trail));
}

TEST(Codepage932Test, CharactersAndBytesBelongTogether)
{
    const Row table[] = {
        {u"", ""},
        {u"abc\r\n\t\\~", "abc\r\n\t\\~"},
        {u"あ日本", "\x82\xA0\x93\xFA\x96\x7B"},
        {u"ｱﾞ｡", "\xB1\xDE\xA1"},
        {u"表ソ", "\x95\x5C\x83\x5C"},
        {u"①㈱髙", "\x87\x40\x87\x8A\xFB\xFC"},
        {u"～∥－￠￡￢", "\x81\x60\x81\x61\x81\x7C\x81\x91\x81\x92\x81\xCA"},
        {u"\uE000\uE757", "\xF0\x40\xF9\xFC"},
        {u"ヴ", "\x83\x94"},
    };
    for (const auto& row : table) {
        EXPECT_EQ(toAnsi(row.text), row.bytes);
        EXPECT_EQ(fromAnsi(row.bytes), row.text);
        EXPECT_TRUE(fitsAnsi(row.text));
        EXPECT_EQ(keptToAnsi(row.text), row.text);
        EXPECT_EQ(ansiLength(row.text), static_cast<int>(row.bytes.size()));
    }
}

TEST(Codepage932Test, EveryDoubleByteButTheDuplicatesComesBack)
{
    int assigned = 0, duplicates = 0;
    forEachDoubleByte([&](const std::string& bytes) {
        const Text text = fromAnsi(bytes);
        ASSERT_EQ(text.size(), 1u);
        if (text == u"\u30FB" && bytes != "\x81\x45") return;
        ++assigned;
        const std::string back = toAnsi(text);
        ASSERT_EQ(back.size(), 2u);
        EXPECT_EQ(fromAnsi(back), text); // a duplicate at least converts to the same character
        duplicates += back != bytes;
    });
    EXPECT_EQ(assigned, 9604);
    EXPECT_EQ(duplicates, 398);
}

TEST(Codepage932Test, DuplicatesTakeTheCodeThatWindowsTakes)
{
    // 纊: the IBM row, not NEC's selection of it
    EXPECT_EQ(toAnsi(fromAnsi("\xED\x40")), "\xFA\x5C");
    EXPECT_EQ(toAnsi(fromAnsi("\xFA\x4A")), "\x87\x54"); // Ⅰ: NEC row 13
    EXPECT_EQ(toAnsi(fromAnsi("\x87\x90")), "\x81\xE0"); // ≒: the row of the standard
    EXPECT_EQ(toAnsi(fromAnsi("\xFA\x59")), "\x87\x82"); // №
}

TEST(Codepage932Test, EverySingleByteComesBack)
{
    for (int byte = 0; byte < 0x100; ++byte) {
        if ((byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC)) continue;
        const std::string bytes(1, static_cast<char>(byte));
        EXPECT_EQ(toAnsi(fromAnsi(bytes)), bytes) << byte;
    }
}

TEST(Codepage932Test, ControlsAreNotRotated)
{
    EXPECT_EQ(fromAnsi("\x1A\x1C\x7F"), u"\x1A\x1C\x7F");
    EXPECT_EQ(toAnsi(u"\x1A\x1C\x7F"), "\x1A\x1C\x7F");
    EXPECT_EQ(toAnsi(TextView(u"a\0b", 3)), std::string("a\0b", 3));
}

TEST(Codepage932Test, TheFiveOddSingleBytes)
{
    EXPECT_EQ(fromAnsi("\x80\xA0\xFD\xFE\xFF"), u"\u0080\u00A0\uF8F1\uF8F2\uF8F3");
    EXPECT_EQ(toAnsi(u"\u0080\u00A0\uF8F1\uF8F2\uF8F3"), "\x80\xA0\xFD\xFE\xFF");
    EXPECT_TRUE(fitsAnsi(u"\u0080\u00A0\uF8F1\uF8F2\uF8F3"));
}

TEST(Codepage932Test, JisTwinsGoToTheirWindowsForms)
{
    const Text twins = u"\u301C\u2016\u2212\u00A2\u00A3\u00AC", own = u"～∥－￠￡￢";
    EXPECT_EQ(toAnsi(twins), toAnsi(own));
    EXPECT_EQ(keptToAnsi(twins), own);
    EXPECT_EQ(ansiLength(twins), 12);
    for (const char16_t twin : twins)
        EXPECT_FALSE(fitsAnsi(Text(1, twin)));
    for (std::size_t i = 0; i < twins.size(); ++i) {
        EXPECT_EQ(ownForm(twins[i]), own[i]);
        EXPECT_EQ(ownForm(own[i]), own[i]);
    }
    EXPECT_EQ(ownForm(u'한'), u'한');
}

TEST(Codepage932Test, WhatHasNoFormBecomesAGetaMarkOfItsOwn)
{
    const std::string geta = "\x81\xAC";
    // Best fit would give \ c e ・ << and V; ICU itself drops 200B, FE0F and FEFF.
    for (const Text text : {u"¥", u"©", u"é", u"·", u"«", u"\u3094", u"\u2014", u"한", u"😀",
                            u"\u200B", u"\uFE0F", u"\uFEFF", u"\u00AD", u"\uF86F"}) {
        EXPECT_EQ(toAnsi(text), geta) << toUtf8(text);
        EXPECT_EQ(keptToAnsi(text), u"〓") << toUtf8(text);
        EXPECT_EQ(ansiLength(text), 2) << toUtf8(text);
        EXPECT_FALSE(fitsAnsi(text)) << toUtf8(text);
    }
    EXPECT_EQ(keptToAnsi(u"a😀b"), u"a〓b");
}

TEST(Codepage932Test, LoneSurrogatesHaveNoForm)
{
    const Text lead(1, char16_t(0xD83D)), trail(1, char16_t(0xDE00));
    EXPECT_EQ(keptToAnsi(lead + u"a"), u"〓a");
    EXPECT_EQ(keptToAnsi(trail + lead), u"〓〓");
    EXPECT_EQ(ansiLength(lead + lead + trail), 4);
}

TEST(Codepage932Test, EveryUnitGivesAsManyBytesAsItsLengthTells)
{
    for (int unit = 0; unit < 0x10000; ++unit) {
        const Text text(1, static_cast<char16_t>(unit));
        const std::string bytes = toAnsi(text);
        ASSERT_GE(bytes.size(), 1u) << unit;
        ASSERT_EQ(ansiLength(text), static_cast<int>(bytes.size())) << unit;
        ASSERT_EQ(fitsAnsi(text), fromAnsi(bytes) == text) << unit;
    }
}

TEST(Codepage932Test, BytesThatAreNoCharacterBecomeAMiddleDot)
{
    const Row table[] = {
        {u"a\u30FB", "a\x81"},       // a lead byte at the end
        {u"\u30FB\r\n", "\x81\r\n"}, // before a line end, which is kept
        {u"\u30FB\"", "\x82\""},     // before a quote
        {u"\u30FB\x7F", "\x82\x7F"},
        {u"a\u30FBb", "a\x85\x40"
                      "b"},                // a row without characters
        {u"\u30FBあ", "\x81\xAD\x82\xA0"}, // a gap in a row
        {u"\u30FB\uF8F1", "\x81\xFD"},
    };
    for (const auto& row : table)
        EXPECT_EQ(fromAnsi(row.bytes), row.text) << row.bytes;
}

TEST(Codepage932Test, APrefixNeverEndsWithHalfACharacter)
{
    struct {
        Text text;
        std::size_t limit;
        Text prefix;
    } const table[] = {
        {u"aあい", 0, u""},      {u"aあい", 1, u"a"},   {u"aあい", 2, u"a"},
        {u"aあい", 3, u"aあ"},   {u"aあい", 4, u"aあ"}, {u"aあい", 5, u"aあい"},
        {u"aあい", 9, u"aあい"}, {u"", 3, u""},         {u"あa", 1, u""},
        {u"😀a", 2, u"〓"},       {u"ｱｲ", 1, u"ｱ"},
    };
    for (const auto& row : table)
        EXPECT_EQ(fromAnsi(ansiPrefix(row.text, row.limit)), row.prefix) << row.limit;
}

}
}
