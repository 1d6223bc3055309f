// What is on the (offscreen) screen after the last painting; looking doesn't paint.
#pragma once
#include <QColor>
#include <QImage>
#include <QPixmap>
#include <QScreen>
#include <QWidget>

namespace tolvek::test {

inline QImage painted(const QWidget& widget)
{
    const QWidget& window = *widget.window();
    const QRect place(widget.mapTo(&window, QPoint()), widget.size());
    return window.screen()
        ->grabWindow(window.winId(), place.x(), place.y(), place.width(), place.height())
        .toImage();
}

// Whether there is text in exactly that colour.
inline bool isInkedIn(const QColor& colour, const QImage& picture)
{
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (picture.pixelColor(x, y) == colour) return true;
    return false;
}

}
