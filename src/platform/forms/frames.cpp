#include "platform/forms/frames.h"

#include <QPainter>

#include <algorithm>

namespace tolvek {

Frame::Frame(Container container, TextView name, TextView caption) : ControlOf(container, name)
{
    setCaption(caption);
}

// Screen readers would call a frame by the title of the frame around it.
void Frame::setCaption(TextView caption)
{
    setTitle(toQt(caption));
    setSpokenName(caption);
}

Line::Line(Container container, TextView name) : ControlOf(container, name)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    // Lines are painted under the other controls.
    lower();
}

// One pixel larger than the distance between the points, otherwise a horizontal
// line would have no height.
void Line::setPoints(float x1, float y1, float x2, float y2)
{
    x1_ = x1;
    y1_ = y1;
    x2_ = x2;
    y2_ = y2;
    const float left = std::min(x1_, x2_);
    const float top = std::min(y1_, y2_);
    Move(left, top, std::max(x1_, x2_) - left + kTwipsPerPixel,
         std::max(y1_, y2_) - top + kTwipsPerPixel);
    update();
}

void Line::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
    // The widget is the line's bounding box; the line is one of its diagonals.
    const bool falls = (x1_ <= x2_) == (y1_ <= y2_);
    const QRect box = rect();
    painter.drawLine(falls ? box.topLeft() : box.bottomLeft(),
                     falls ? box.bottomRight() : box.topRight());
}

PictureBox::PictureBox(Container container, TextView name) : ControlOf(container, name) {}

void PictureBox::setDraw(Draw draw)
{
    draw_ = std::move(draw);
    update();
}

void PictureBox::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    if (draw_) draw_(painter, rect());
}

}
