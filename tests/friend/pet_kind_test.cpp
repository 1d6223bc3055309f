#include "friend/pet_kind.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

Text changed(Int16 toCode, const Text& source)
{
    Text result = u"before";
    edPetKind(toCode, source, result);
    return result;
}

TEST(PetKindTest, EveryKindHasItsCode)
{
    const std::pair<Text, Text> table[] = {
        {u"1", u"くま"},     {u"2", u"うさぎ"},     {u"3", u"かめ"},     {u"4", u"ねこ"},
        {u"6", u"ロボット"}, {u"7", u"ハムスター"}, {u"8", u"ペンギン"}, {u"9", u"いぬ"},
    };
    for (const auto& [code, kind] : table) {
        EXPECT_EQ(changed(-1, kind), code);
        EXPECT_EQ(changed(0, code), kind);
    }
}

TEST(PetKindTest, AnUnknownKindIsCodeZero)
{
    for (const TextView kind : {u"", u"きつね", u"クマ", u"くま "})
        EXPECT_EQ(changed(-1, Text(kind)), u"0");
}

TEST(PetKindTest, AnUnknownCodeHasNoKind)
{
    for (const TextView code : {u"", u"0", u"5", u"10", u" 1", u"１"})
        EXPECT_EQ(changed(0, Text(code)), u"");
}

TEST(PetKindTest, SourceAndResultMayBeOneText)
{
    Text text = u"ねこ";
    edPetKind(-1, text, text);
    EXPECT_EQ(text, u"4");
}

}
}
