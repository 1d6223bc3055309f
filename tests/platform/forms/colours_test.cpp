#include "platform/forms/colours.h"

#include <QGuiApplication>
#include <QPalette>

#include <gtest/gtest.h>

namespace tolvek::test {

namespace {

TEST(ColoursTest, TheBytesStandBlueGreenRed)
{
    EXPECT_EQ(colourOf(0x00FFC0C0), QColor(0xC0, 0xC0, 0xFF)); // the main window's light blue
    EXPECT_EQ(colourOf(0x000000FF), QColor(Qt::red));
    EXPECT_EQ(colourOf(0xFF0000), QColor(Qt::blue));
    EXPECT_EQ(colourOf(0), QColor(Qt::black));
}

TEST(ColoursTest, TheHighBitAsksForTheSystemsColour)
{
    const QPalette palette = QGuiApplication::palette();
    EXPECT_EQ(colourOf(kWindowText), palette.color(QPalette::WindowText));
    EXPECT_EQ(colourOf(kButtonFace), palette.color(QPalette::Button));
    EXPECT_EQ(colourOf(static_cast<Colour>(0x800000FFU)), palette.color(QPalette::WindowText));
}

}

}
