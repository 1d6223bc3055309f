// Shows as much of a form's client area as its window has room for. Where the client
// area is larger, a scroll bar appears at the edge, and the client area is moved below
// the menu bar. The wheel and the page keys scroll it, and a control that gets the
// focus is scrolled into view.
#pragma once
#include <QRect>

class QScrollBar;
class QWheelEvent;
class QWidget;

namespace tolvek {

class ClientScroll {
public:
    ClientScroll(QWidget& window, QWidget& client) : window_(window), client_(client) {}

    // The size of the part of a window that shows a client area of that size, scroll
    // bars included; never more than `room`.
    QSize viewFor(const QSize& client, const QSize& room) const;
    // Places the client area in that part of the window, and fills it.
    void arrange(const QRect& view, const QSize& client);

    void reveal(const QWidget& control);
    // Both return false if there is nothing to scroll.
    bool turn(QWheelEvent& event);
    bool pressed(int key);

private:
    struct Bars {
        bool down = false, across = false;
    };
    Bars barsFor(const QSize& client, const QSize& room) const;
    QSize sizeOf(const Bars& bars) const;
    int barWidth() const;
    void makeBars();
    void placeBars(const QSize& shown);
    void place();
    void adjust(QScrollBar& bar, bool shown, int whole, int part);

    QWidget& window_;
    QWidget& client_;
    QRect view_;
    // Children of the window, made when a client area first needs them.
    QScrollBar* across_ = nullptr;
    QScrollBar* down_ = nullptr;
    QWidget* corner_ = nullptr; // between the two bars
};

}
