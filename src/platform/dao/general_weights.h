// The weights of the General sort order, for each character.
#pragma once
#include <cstdint>

namespace tolvek {

// S simple, I with a secondary weight of its own, K kana, M a mark that adds to the
// previous secondary, W without primary weight (hyphens, apostrophes, controls),
// R prolonged and repeat marks, X without any weight.
enum class WeightType : std::uint8_t { X, S, I, K, M, W, R };

struct Weight {
    std::uint32_t primary = 0; // up to four bytes, the first one never 0
    WeightType type = WeightType::X;
    std::uint8_t secondary = 0; // for W: its code
    std::uint8_t kanaSize = 0;  // 2 small, 3 full size
};

// The weight of the character's folded form.
const Weight& weightOf(char16_t character);

}
