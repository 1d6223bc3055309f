// Controls that contain or draw: frames, lines, pictures.
#pragma once
#include "platform/forms/control.h"

#include <QGroupBox>

#include <functional>

namespace tolvek {

// Contains other controls; their positions are relative to its corner.
class Frame : public ControlOf<QGroupBox> {
    Q_OBJECT
public:
    Frame(Container container, TextView name, TextView caption = {});
    Text Caption() const { return fromQt(title()); }
    void setCaption(TextView caption);
};

// A straight line between two points, in twips; receives no mouse events.
class Line : public ControlOf<QWidget> {
    Q_OBJECT
public:
    Line(Container container, TextView name);
    float X1() const { return x1_; }
    float Y1() const { return y1_; }
    float X2() const { return x2_; }
    float Y2() const { return y2_; }
    void setPoints(float x1, float y1, float x2, float y2);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    float x1_ = 0, y1_ = 0, x2_ = 0, y2_ = 0;
};

// Shows what a function draws.
class PictureBox : public ControlOf<QWidget> {
    Q_OBJECT
public:
    using Draw = std::function<void(QPainter&, const QRect&)>;
    PictureBox(Container container, TextView name);
    void setDraw(Draw draw);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Draw draw_;
};

}
