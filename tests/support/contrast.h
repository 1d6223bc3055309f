// The contrast of two colours, from 1 (none) to 21 (black on white), and a palette as
// desktops have it that are dark.
#pragma once
#include <QColor>
#include <QImage>
#include <QPalette>

#include <algorithm>
#include <cmath>
#include <vector>

namespace tolvek::test {

constexpr double kReadable = 4.5;
constexpr double kVisible = 3; // enough for a caption that can't be used at present

inline double luminance(const QColor& colour)
{
    const auto part = [](double value) {
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) +
           0.0722 * part(colour.blueF());
}

inline double contrast(const QColor& a, const QColor& b)
{
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

// The highest contrast of any pixel with the background, which is the pixel of middle
// luminance where there is more background than text.
inline double inkContrast(const QImage& picture)
{
    std::vector<double> pixels;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            pixels.push_back(luminance(picture.pixelColor(x, y)) + 0.05);
    std::sort(pixels.begin(), pixels.end());
    const double paper = pixels[pixels.size() / 2];
    return std::max(paper / pixels.front(), pixels.back() / paper);
}

inline QPalette darkPalette()
{
    QPalette dark(QColor(0xF0, 0xF0, 0xF0), QColor(0x2A, 0x2E, 0x32));
    dark.setColor(QPalette::Base, QColor(0x1B, 0x1E, 0x20));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        dark.setColor(QPalette::Disabled, role, QColor(0x60, 0x64, 0x68));
    return dark;
}

}
