#include "platform/forms/buttons.h"
#include "platform/forms/frames.h"
#include "test_form.h"

#include <QPainter>

#include <gtest/gtest.h>

namespace tolvek::test {

namespace {

TEST(FramesTest, ControlsInAFrameCountFromItsCorner)
{
    ShownForm form;
    auto& frame = form.add<Frame>(u"Frame1", u"条　件");
    frame.Move(60, 45, 6000, 3000);
    CommandButton button(frame, u"cmd");
    button.Move(150, 300, 900, 300);
    EXPECT_EQ(frame.Caption(), u"条　件");
    EXPECT_EQ(button.mapTo(&form.client(), QPoint(0, 0)), QPoint(14, 23));
}

TEST(FramesTest, ALevelLineIsOnePixelHighAndTakesNoMouse)
{
    ShownForm form;
    auto& line = form.add<Line>(u"Line1");
    line.setPoints(0, 3, 11745, 3);
    EXPECT_FLOAT_EQ(line.Y1(), 3);
    EXPECT_FLOAT_EQ(line.X2(), 11745);
    EXPECT_EQ(line.geometry(), QRect(0, 1, 784, 1));
    EXPECT_TRUE(line.testAttribute(Qt::WA_TransparentForMouseEvents));
    line.setForeColor(0x0000FF);
    EXPECT_EQ(line.grab().toImage().pixelColor(400, 0), QColor(Qt::red));
}

TEST(FramesTest, ARisingLineIsPaintedRising)
{
    ShownForm form;
    auto& line = form.add<Line>(u"Line1");
    line.setForeColor(0x0000FF);
    line.setPoints(0, 150, 150, 0);
    const QImage image = line.grab().toImage();
    EXPECT_EQ(image.pixelColor(0, 10), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(10, 0), QColor(Qt::red));
    EXPECT_NE(image.pixelColor(0, 0), QColor(Qt::red));
}

TEST(FramesTest, APictureBoxShowsWhatIsDrawn)
{
    ShownForm form;
    auto& box = form.add<PictureBox>(u"Image1");
    box.Move(0, 0, 300, 300);
    box.setDraw([](QPainter& painter, const QRect& area) { painter.fillRect(area, Qt::blue); });
    EXPECT_EQ(box.grab().toImage().pixelColor(15, 15), QColor(Qt::blue));
}

}

}
