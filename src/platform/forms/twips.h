// The unit of every position and size: 15 twips are one device-independent
// pixel. Properties keep the twips as they were set; only what goes to the
// screen is a pixel, rounded up at the very end.
#pragma once
#include <cmath>

namespace tolvek {

inline constexpr int kTwipsPerPixel = 15;

// What title bar, borders and menu bar count in a form's outer size, whatever
// the window manager draws.
inline constexpr int kFrameTwipsHigh = 600;
inline constexpr int kFrameTwipsWide = 120;
// The height without a menu bar, for a form that is laid out down to its edge.
inline constexpr int kTitleTwipsHigh = 375;

inline int pixels(float twips)
{
    return static_cast<int>(std::ceil(static_cast<double>(twips) / kTwipsPerPixel));
}

inline float twips(int pixels)
{
    return static_cast<float>(pixels) * kTwipsPerPixel;
}

}
