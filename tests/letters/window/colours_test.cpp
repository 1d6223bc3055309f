#include "letters/window/colours.h"

#include "platform/forms/appearance.h"
#include "support/contrast.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

class LetterColoursTest : public ::testing::TestWithParam<bool> {
protected:
    QPalette palette = GetParam() ? tolvek::darkPalette() : lightPalette();
    QColor of(QPalette::ColorRole role) const { return palette.color(role); }
};

TEST_P(LetterColoursTest, MarksAndAxesAreReadable)
{
    EXPECT_EQ(isDark(palette), GetParam());
    const LetterColours colours = coloursFor(palette);
    EXPECT_GE(contrast(colours.mark, colours.markText), kReadable);
    EXPECT_GE(contrast(colours.current, colours.currentText), kReadable);
    EXPECT_GE(contrast(colours.faint, of(QPalette::Base)), kReadable);
    for (const QColor& bar : {colours.received, colours.sent})
        EXPECT_GE(contrast(bar, of(QPalette::Base)), kVisible);
    // The letter that F3 has reached stands out from the other marks.
    EXPECT_GE(contrast(colours.current, colours.mark), 1.5);
}

TEST_P(LetterColoursTest, TextsAreReadable)
{
    using Role = QPalette;
    EXPECT_GE(contrast(of(Role::Text), of(Role::Base)), kReadable);
    EXPECT_GE(contrast(of(Role::Text), of(Role::AlternateBase)), kReadable);
    EXPECT_GE(contrast(of(Role::WindowText), of(Role::Window)), kReadable);
    EXPECT_GE(contrast(of(Role::ButtonText), of(Role::Button)), kReadable);
    EXPECT_GE(contrast(of(Role::HighlightedText), of(Role::Highlight)), kReadable);
    EXPECT_GE(contrast(of(Role::PlaceholderText), of(Role::Base)), kReadable);
    EXPECT_GE(contrast(of(Role::ToolTipText), of(Role::ToolTipBase)), kReadable);
    EXPECT_GE(contrast(palette.color(Role::Disabled, Role::WindowText), of(Role::Window)),
              kVisible);
}

INSTANTIATE_TEST_SUITE_P(Schemes, LetterColoursTest, ::testing::Bool(),
                         [](const auto& dark) { return dark.param ? "Dark" : "Light"; });

}
}
