#include "dialogs/pictures.h"

#include <gtest/gtest.h>

#include <QPainter>
#include <QPixmap>

namespace tolvek::test {
namespace {

using Draw = void (*)(QPainter&, const QRect&);

QImage drawn(Draw draw, const QRect& area)
{
    QImage image(120, 120, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    draw(painter, area);
    return image;
}

QRect paintedArea(const QImage& image)
{
    QRect area;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qAlpha(image.pixel(x, y)) != 0) area |= QRect(x, y, 1, 1);
    return area;
}

TEST(PicturesTest, EachIsDrawnInsideItsAreaAndFillsMostOfIt)
{
    const QRect area(20, 10, 90, 90);
    for (const Draw draw : {drawLetter, drawPaw}) {
        const QRect painted = paintedArea(drawn(draw, area));
        EXPECT_TRUE(area.contains(painted));
        EXPECT_GT(painted.width(), 70);
        EXPECT_GT(painted.height(), 50);
    }
}

TEST(PicturesTest, AnAreaThatIsNoSquareIsUsedInItsMiddle)
{
    const QRect painted = paintedArea(drawn(drawPaw, QRect(0, 40, 120, 40)));
    EXPECT_TRUE(QRect(40, 40, 40, 40).contains(painted));
}

TEST(PicturesTest, TheIconHasTheSizesOfDesktops)
{
    const QIcon icon = programIcon();
    for (const int side : {16, 32, 48, 256}) {
        EXPECT_TRUE(icon.availableSizes().contains(QSize(side, side)));
        EXPECT_FALSE(paintedArea(icon.pixmap(side).toImage()).isEmpty());
    }
}

}
}
