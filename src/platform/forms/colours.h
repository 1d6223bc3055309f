// Colours as the platform numbers them: &H00BBGGRR, or &H800000xx for one of
// the system's own (&H80000008 is the colour of text in a window).
#pragma once
#include <QColor>

#include <cstdint>

namespace tolvek {

using Colour = std::int32_t;

inline constexpr Colour kWindowBackground = static_cast<Colour>(0x80000005U);
inline constexpr Colour kWindowText = static_cast<Colour>(0x80000008U);
inline constexpr Colour kButtonFace = static_cast<Colour>(0x8000000FU);

// A system colour that isn't known is the window text's.
QColor colourOf(Colour colour);

}
