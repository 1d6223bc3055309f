#include "platform/forms/client_scroll.h"

#include <QApplication>
#include <QScrollBar>
#include <QStyle>
#include <QWheelEvent>

#include <algorithm>

namespace tolvek {

namespace {

constexpr int kStep = 20;   // pixels for a click on an arrow
constexpr int kNotch = 120; // what one notch of a wheel counts

// Scrolls as little as possible; of what is larger than the view, the beginning is
// shown.
void show(QScrollBar& bar, int from, int to)
{
    if (to > bar.value() + bar.pageStep()) bar.setValue(to - bar.pageStep());
    if (from < bar.value()) bar.setValue(from);
}

}

int ClientScroll::barWidth() const
{
    return window_.style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, &window_);
}

// A bar at one edge takes room from the other direction.
ClientScroll::Bars ClientScroll::barsFor(const QSize& client, const QSize& room) const
{
    Bars bars;
    bars.down = client.height() > room.height();
    bars.across = client.width() > room.width() - (bars.down ? barWidth() : 0);
    if (bars.across) bars.down = client.height() > room.height() - barWidth();
    return bars;
}

QSize ClientScroll::sizeOf(const Bars& bars) const
{
    return {bars.down ? barWidth() : 0, bars.across ? barWidth() : 0};
}

QSize ClientScroll::viewFor(const QSize& client, const QSize& room) const
{
    return (client + sizeOf(barsFor(client, room))).boundedTo(room);
}

void ClientScroll::makeBars()
{
    if (down_) return;
    across_ = new QScrollBar(Qt::Horizontal, &window_);
    down_ = new QScrollBar(Qt::Vertical, &window_);
    corner_ = new QWidget(&window_);
    corner_->setAutoFillBackground(true);
    for (QScrollBar* bar : {across_, down_}) {
        bar->setFocusPolicy(Qt::NoFocus);
        bar->setSingleStep(kStep);
        QObject::connect(bar, &QScrollBar::valueChanged, &window_, [this] { place(); });
    }
}

void ClientScroll::adjust(QScrollBar& bar, bool shown, int whole, int part)
{
    bar.setPageStep(part);
    bar.setRange(0, std::max(0, whole - part));
    bar.setVisible(shown);
}

void ClientScroll::arrange(const QRect& view, const QSize& client)
{
    view_ = view;
    const Bars bars = barsFor(client, view.size());
    const QSize shown = view.size() - sizeOf(bars);
    client_.resize(client.expandedTo(shown));
    if (bars.down || bars.across) makeBars();
    if (down_) {
        adjust(*across_, bars.across, client.width(), shown.width());
        adjust(*down_, bars.down, client.height(), shown.height());
        corner_->setVisible(bars.down && bars.across);
        placeBars(shown);
    }
    place();
}

void ClientScroll::placeBars(const QSize& shown)
{
    const QPoint end = view_.topLeft() + QPoint(shown.width(), shown.height());
    across_->setGeometry(view_.left(), end.y(), shown.width(), barWidth());
    down_->setGeometry(end.x(), view_.top(), barWidth(), shown.height());
    corner_->setGeometry(end.x(), end.y(), barWidth(), barWidth());
    for (QWidget* part : {static_cast<QWidget*>(across_), static_cast<QWidget*>(down_), corner_})
        part->raise();
}

void ClientScroll::place()
{
    const QPoint scrolled = down_ ? QPoint(across_->value(), down_->value()) : QPoint();
    client_.move(view_.topLeft() - scrolled);
}

void ClientScroll::reveal(const QWidget& control)
{
    if (!down_ || !client_.isAncestorOf(&control)) return;
    const QRect place(control.mapTo(&client_, QPoint()), control.size());
    show(*across_, place.left(), place.left() + place.width());
    show(*down_, place.top(), place.top() + place.height());
}

bool ClientScroll::turn(QWheelEvent& event)
{
    if (!down_ || down_->maximum() == 0) return false;
    const int lines = event.angleDelta().y() * QApplication::wheelScrollLines();
    down_->setValue(down_->value() - lines * kStep / kNotch);
    event.accept();
    return true;
}

bool ClientScroll::pressed(int key)
{
    const bool back = key == Qt::Key_PageUp;
    if (!down_ || down_->maximum() == 0 || (!back && key != Qt::Key_PageDown)) return false;
    down_->triggerAction(back ? QScrollBar::SliderPageStepSub : QScrollBar::SliderPageStepAdd);
    return true;
}

}
