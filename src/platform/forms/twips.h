// The unit of every position and size: 15 twips are one device-independent pixel.
// Properties keep the twips as set; only values passed to the screen are converted
// to pixels, rounded up as the last step.
#pragma once
#include <cmath>

namespace tolvek {

inline constexpr int kTwipsPerPixel = 15;

// What title bar, borders and menu bar add to a form's outer size, whatever the
// window manager draws.
inline constexpr int kFrameTwipsHigh = 600;
inline constexpr int kFrameTwipsWide = 120;
// The height without a menu bar, for a form whose layout extends to its edge.
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
