// Colours in the classic platform's numbers: &H00BBGGRR, or &H800000xx for a system
// colour (&H80000008 is the colour of text in a window).
#pragma once
#include <QColor>

#include <cstdint>

namespace tolvek {

using Colour = std::int32_t;

inline constexpr Colour kWindowText = static_cast<Colour>(0x80000008U);
inline constexpr Colour kButtonFace = static_cast<Colour>(0x8000000FU);

// An unknown system colour gives that of window text.
QColor colourOf(Colour colour);

}
