#include "letters/window/colours.h"

#include <QPalette>

#include <utility>

namespace tolvek {

namespace {

QPalette paletteOf(std::initializer_list<std::pair<QPalette::ColorRole, QColor>> colours,
                   const QColor& disabled)
{
    QPalette palette;
    for (const auto& [role, colour] : colours)
        palette.setColor(role, colour);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, disabled);
    return palette;
}

}

LetterColours coloursFor(const QPalette& palette)
{
    if (isDark(palette))
        return {.mark = 0xff6b5600u,
                .markText = 0xfffff3c4u,
                .current = 0xffffb04du,
                .currentText = 0xff000000u,
                .received = 0xff6fa8e8u,
                .sent = 0xfff0a35eu,
                .faint = 0xffa8a8a8u};
    return {.mark = 0xffffe58au,
            .markText = 0xff000000u,
            .current = 0xffff9a3cu,
            .currentText = 0xff000000u,
            .received = 0xff2f6fb5u,
            .sent = 0xffb8560fu,
            .faint = 0xff606060u};
}

bool isDark(const QPalette& palette)
{
    return palette.color(QPalette::Base).lightness() < 128;
}

QPalette darkPalette()
{
    return paletteOf({{QPalette::Window, 0xff2b2b2eu},
                      {QPalette::WindowText, 0xffe6e6e6u},
                      {QPalette::Base, 0xff1e1e20u},
                      {QPalette::AlternateBase, 0xff252528u},
                      {QPalette::Text, 0xffe6e6e6u},
                      {QPalette::PlaceholderText, 0xff9a9a9au},
                      {QPalette::Button, 0xff3a3a3eu},
                      {QPalette::ButtonText, 0xffe6e6e6u},
                      {QPalette::BrightText, 0xffffffffu},
                      {QPalette::ToolTipBase, 0xff3a3a3eu},
                      {QPalette::ToolTipText, 0xffe6e6e6u},
                      {QPalette::Highlight, 0xff3d6ea5u},
                      {QPalette::HighlightedText, 0xffffffffu},
                      {QPalette::Link, 0xff8ab4f8u},
                      {QPalette::Light, 0xff55555au},
                      {QPalette::Midlight, 0xff48484cu},
                      {QPalette::Mid, 0xff38383cu},
                      {QPalette::Dark, 0xff18181au},
                      {QPalette::Shadow, 0xff0c0c0du}},
                     0xff808084u);
}

}
