#include "friend/pet_kind.h"

namespace tolvek {

namespace {

struct PetKind {
    TextView code;
    TextView kind;
};

// Code 5 doesn't exist.
constexpr PetKind kPetKinds[] = {
    {u"1", u"くま"},     {u"2", u"うさぎ"},     {u"3", u"かめ"},     {u"4", u"ねこ"},
    {u"6", u"ロボット"}, {u"7", u"ハムスター"}, {u"8", u"ペンギン"}, {u"9", u"いぬ"},
};

Text codeOf(TextView kind)
{
    for (const PetKind& pet : kPetKinds)
        if (pet.kind == kind) return Text(pet.code);
    return u"0";
}

Text kindOf(TextView code)
{
    for (const PetKind& pet : kPetKinds)
        if (pet.code == code) return Text(pet.kind);
    return {};
}

}

void edPetKind(Int16 toCode, const Text& source, Text& result)
{
    result = toCode != 0 ? codeOf(source) : kindOf(source);
}

}
