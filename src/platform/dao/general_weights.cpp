#include "platform/dao/general_weights.h"

#include <array>
#include <memory>
#include <unicode/uchar.h>

namespace tolvek {

namespace {

// The names used in general_weights.inc.
[[maybe_unused]] constexpr WeightType X = WeightType::X, S = WeightType::S, I = WeightType::I,
                                      K = WeightType::K, M = WeightType::M, W = WeightType::W,
                                      R = WeightType::R;

// Eight bytes per character: 16 bits character, 3 type, 2 kana size, 8 secondary,
// 32 primary.
constexpr std::uint64_t packed(std::uint64_t character, WeightType type, std::uint64_t primary,
                               std::uint64_t secondary, std::uint64_t flag)
{
    const std::uint64_t small = type == K ? flag : 0;
    const std::uint64_t second = type == W ? flag : secondary;
    return character << 48 | std::uint64_t(type) << 42 | small << 40 | second << 32 | primary;
}

#define WEIGHT(character, type, primary, secondary, flag)                                          \
    packed(0x##character, type, 0x0##primary, 0x0##secondary, 0x0##flag),
constexpr std::uint64_t kPacked[] = {
#include "general_weights.inc"
};
#undef WEIGHT

using Weights = std::array<Weight, 0x10000>;

void shareFoldedWeights(Weights& weights)
{
    for (std::size_t c = 0; c < weights.size(); ++c) {
        const auto folded =
            static_cast<std::size_t>(u_foldCase(static_cast<UChar32>(c), U_FOLD_CASE_DEFAULT));
        if (folded != c && folded < weights.size()) weights[c] = weights[folded];
    }
}

std::unique_ptr<const Weights> unpacked()
{
    auto weights = std::make_unique<Weights>();
    for (const std::uint64_t entry : kPacked) {
        Weight& weight = (*weights)[entry >> 48];
        weight.type = static_cast<WeightType>(entry >> 42 & 7);
        weight.kanaSize = static_cast<std::uint8_t>(entry >> 40 & 3);
        weight.secondary = static_cast<std::uint8_t>(entry >> 32);
        weight.primary = static_cast<std::uint32_t>(entry);
    }
    shareFoldedWeights(*weights);
    return weights;
}

}

const Weight& weightOf(char16_t character)
{
    static const std::unique_ptr<const Weights> weights = unpacked();
    return (*weights)[character];
}

}
