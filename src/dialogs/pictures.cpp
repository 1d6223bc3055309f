#include "dialogs/pictures.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace tolvek {

namespace {

const QColor kPaper(255, 250, 236);
const QColor kPaperShade(246, 232, 205);
const QColor kInk(120, 96, 84);
const QColor kSeal(232, 110, 120);
const QColor kPawPad(150, 108, 92);

// Maps the painter to a square of 100 by 100 units in the middle of the area, and
// restores it at the end.
class UnitSquare {
public:
    UnitSquare(QPainter& painter, const QRect& area) : painter_(painter)
    {
        const int side = qMin(area.width(), area.height());
        painter_.save();
        painter_.setRenderHint(QPainter::Antialiasing);
        painter_.translate(QRectF(area).center() - QPointF(side, side) / 2.0);
        painter_.scale(side / 100.0, side / 100.0);
    }
    ~UnitSquare() { painter_.restore(); }
    UnitSquare(const UnitSquare&) = delete;
    UnitSquare& operator=(const UnitSquare&) = delete;

private:
    QPainter& painter_;
};

QPen outline()
{
    return {kInk, 3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
}

// Coordinates of all drawing functions are in the units of UnitSquare.
void drawHeart(QPainter& painter, const QPointF& middle, double size)
{
    QPainterPath heart(middle + QPointF(0, size));
    heart.cubicTo(middle + QPointF(-1.9 * size, -0.2 * size),
                  middle + QPointF(-0.8 * size, -1.5 * size), middle + QPointF(0, -0.4 * size));
    heart.cubicTo(middle + QPointF(0.8 * size, -1.5 * size),
                  middle + QPointF(1.9 * size, -0.2 * size), middle + QPointF(0, size));
    painter.setPen(Qt::NoPen);
    painter.setBrush(kSeal);
    painter.drawPath(heart);
}

}

void drawLetter(QPainter& painter, const QRect& area)
{
    const UnitSquare square(painter, area);
    const QRectF paper(6, 22, 88, 60);
    painter.setPen(outline());
    painter.setBrush(kPaper);
    painter.drawRoundedRect(paper, 6, 6);
    painter.drawLine(QPointF(9, 79), QPointF(38, 52));
    painter.drawLine(QPointF(91, 79), QPointF(62, 52));
    QPainterPath flap(QPointF(9, 24));
    flap.quadTo(50, 90, 91, 24);
    painter.setBrush(kPaperShade);
    painter.drawPath(flap);
    drawHeart(painter, {50, 55}, 8);
}

void drawPaw(QPainter& painter, const QRect& area)
{
    const UnitSquare square(painter, area);
    painter.setPen(Qt::NoPen);
    painter.setBrush(kPawPad);
    // The pad, as four curves; the toes are ellipses above it.
    QPainterPath pad(QPointF(50, 46));
    pad.cubicTo(70, 46, 88, 76, 74, 86);
    pad.cubicTo(66, 92, 58, 84, 50, 84);
    pad.cubicTo(42, 84, 34, 92, 26, 86);
    pad.cubicTo(12, 76, 30, 46, 50, 46);
    painter.drawPath(pad);
    const QPointF toes[] = {{17, 46}, {37, 24}, {63, 24}, {83, 46}};
    for (const QPointF& toe : toes)
        painter.drawEllipse(toe, 10, 14);
}

QIcon programIcon()
{
    QIcon icon;
    for (const int side : {16, 24, 32, 48, 64, 128, 256}) {
        QPixmap picture(side, side);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        drawLetter(painter, picture.rect());
        // The lower right quarter.
        drawPaw(painter, QRect(side / 2, side / 2, side / 2, side / 2));
        painter.end();
        icon.addPixmap(picture);
    }
    return icon;
}

}
