#include "letters/window/year_strip.h"

#include "letters/window/colours.h"
#include "letters/window/letter_texts.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

namespace tolvek {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kMargin = 6;

}

YearStrip::YearStrip(QWidget* parent) : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAccessibleName(u"年の帯（月ごとの手紙の数）"_s);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    describe();
}

void YearStrip::showAxis(MonthAxis axis)
{
    axis_ = std::move(axis);
    counts_.assign(static_cast<std::size_t>(axis_.size()), {});
    anchor_ = end_ = std::max(0, axis_.size() - 1);
    update();
}

void YearStrip::showCounts(const std::vector<MonthCount>& counts)
{
    counts_.assign(static_cast<std::size_t>(axis_.size()), {});
    most_ = 1;
    for (const MonthCount& each : counts) {
        const int cell = axis_.cellOf(each.month);
        if (cell < 0) continue;
        counts_[static_cast<std::size_t>(cell)] = each;
        most_ = std::max({most_, each.received, each.sent});
    }
    update();
}

void YearStrip::showChosen(std::optional<Months> months)
{
    chosen_ =
        months ? Cells{axis_.firstCell(months->first), axis_.lastCell(months->last)} : Cells{};
    if (chosen_.any() && !dragging_) {
        anchor_ = chosen_.first;
        end_ = chosen_.last;
    }
    describe();
    update();
}

QSize YearStrip::sizeHint() const
{
    return {600, 4 * fontMetrics().height() + 30};
}

QSize YearStrip::minimumSizeHint() const
{
    return {200, sizeHint().height()};
}

QRectF YearStrip::plot() const
{
    return QRectF(rect()).adjusted(kMargin, kMargin, -kMargin, -fontMetrics().height() - kMargin);
}

double YearStrip::leftOf(int cell) const
{
    const QRectF room = plot();
    return room.left() + room.width() * cell / std::max(1, axis_.size());
}

int YearStrip::cellAt(double x) const
{
    const QRectF room = plot();
    const int cell = static_cast<int>((x - room.left()) / room.width() * axis_.size());
    return std::clamp(cell, 0, std::max(0, axis_.size() - 1));
}

bool YearStrip::isOnYears(double y) const
{
    return y > plot().bottom();
}

void YearStrip::choose(int anchor, int end)
{
    if (axis_.size() == 0) return;
    anchor_ = anchor;
    end_ = end;
    chosen_ = {std::min(anchor, end), std::max(anchor, end)};
    describe();
    update();
    emit chosen(Months{axis_.monthAt(chosen_.first), axis_.monthAt(chosen_.last)});
}

void YearStrip::chooseNone()
{
    chosen_ = {};
    describe();
    update();
    emit chosen(std::nullopt);
}

void YearStrip::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || axis_.size() == 0)
        return QWidget::mousePressEvent(event);
    const int cell = cellAt(event->position().x());
    if (isOnYears(event->position().y())) return choose(cell / 12 * 12, cell / 12 * 12 + 11);
    dragging_ = true;
    const bool extend = event->modifiers().testFlag(Qt::ShiftModifier) && chosen_.any();
    choose(extend ? anchor_ : cell, cell);
}

void YearStrip::mouseMoveEvent(QMouseEvent* event)
{
    if (!dragging_) return;
    const int cell = cellAt(event->position().x());
    if (cell != end_) choose(anchor_, cell);
}

void YearStrip::mouseReleaseEvent(QMouseEvent*)
{
    dragging_ = false;
}

void YearStrip::moveBy(int cells, bool extend)
{
    const int end = std::clamp(end_ + cells, 0, std::max(0, axis_.size() - 1));
    choose(extend && chosen_.any() ? anchor_ : end, end);
}

void YearStrip::keyPressEvent(QKeyEvent* event)
{
    const bool extend = event->modifiers().testFlag(Qt::ShiftModifier);
    switch (event->key()) {
    case Qt::Key_Left:
        return moveBy(-1, extend);
    case Qt::Key_Right:
        return moveBy(1, extend);
    case Qt::Key_Up:
        return moveBy(-12, extend);
    case Qt::Key_Down:
        return moveBy(12, extend);
    case Qt::Key_Home:
        return moveBy(-axis_.size(), extend);
    case Qt::Key_End:
        return moveBy(axis_.size(), extend);
    case Qt::Key_Escape:
    case Qt::Key_Delete:
        return chooseNone();
    default:
        QWidget::keyPressEvent(event);
    }
}

QString YearStrip::describedAt(int cell) const
{
    const MonthCount& count = counts_[static_cast<std::size_t>(cell)];
    return monthText(axis_.monthAt(cell)) + u"  受信 "_s + countText(count.received) +
           u" 通、送信 "_s + countText(count.sent) + u" 通"_s;
}

bool YearStrip::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip || axis_.size() == 0) return QWidget::event(event);
    const auto* const help = static_cast<QHelpEvent*>(event);
    QToolTip::showText(help->globalPos(), describedAt(cellAt(help->pos().x())), this);
    return true;
}

void YearStrip::describe()
{
    QString text = u"すべての期間"_s;
    if (chosen_.any()) {
        std::size_t received = 0, sent = 0;
        for (int cell = chosen_.first; cell <= chosen_.last; ++cell) {
            received += counts_[static_cast<std::size_t>(cell)].received;
            sent += counts_[static_cast<std::size_t>(cell)].sent;
        }
        text = monthText(axis_.monthAt(chosen_.first)) + u"から"_s +
               monthText(axis_.monthAt(chosen_.last)) + u"まで。受信 "_s + countText(received) +
               u" 通、送信 "_s + countText(sent) + u" 通"_s;
    }
    if (text == accessibleDescription()) return;
    setAccessibleDescription(text);
    QAccessibleEvent changed(this, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&changed);
}

void YearStrip::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Base));
    if (axis_.size() == 0) {
        painter.setPen(coloursFor(palette()).faint);
        painter.drawText(rect(), Qt::AlignCenter, u"手紙を読むと、ここに月ごとの数が出ます"_s);
        return;
    }
    paintChosen(painter);
    paintBars(painter);
    paintYears(painter);
    paintFocus(painter);
}

void YearStrip::paintChosen(QPainter& painter) const
{
    if (!chosen_.any()) return;
    QColor shade = palette().color(QPalette::Highlight);
    shade.setAlpha(60);
    const QRectF room = plot();
    const QRectF stretch(leftOf(chosen_.first), room.top(),
                         leftOf(chosen_.last + 1) - leftOf(chosen_.first), room.height());
    painter.fillRect(stretch, shade);
    painter.setPen(palette().color(QPalette::Highlight));
    painter.drawLine(stretch.topLeft(), stretch.bottomLeft());
    painter.drawLine(stretch.topRight(), stretch.bottomRight());
}

void YearStrip::paintBars(QPainter& painter) const
{
    const LetterColours colours = coloursFor(palette());
    const QRectF room = plot();
    const double middle = room.top() + room.height() * 0.6; // most users receive more
    const double up = middle - room.top(), down = room.bottom() - middle;
    for (int cell = 0; cell < axis_.size(); ++cell) {
        const MonthCount& count = counts_[static_cast<std::size_t>(cell)];
        const double left = leftOf(cell), wide = std::max(1.0, leftOf(cell + 1) - left - 1);
        const auto high = [&](std::size_t letters, double most) {
            return letters == 0 ? 0 : std::max(1.5, most * double(letters) / double(most_));
        };
        const double received = high(count.received, up), sent = high(count.sent, down);
        painter.fillRect(QRectF(left, middle - received, wide, received), colours.received);
        painter.fillRect(QRectF(left, middle + 1, wide, sent), colours.sent);
    }
    painter.setPen(colours.faint);
    painter.drawLine(QPointF(room.left(), middle), QPointF(room.right(), middle));
}

// With too many years for the room, only every second, fifth, ... is labelled.
void YearStrip::paintYears(QPainter& painter) const
{
    painter.setPen(coloursFor(palette()).faint);
    const double label = fontMetrics().horizontalAdvance(u"20000"_s);
    const double year = leftOf(12) - leftOf(0);
    const int step = std::max(1, static_cast<int>(label / std::max(1.0, year) + 0.999));
    const QRectF room = plot();
    for (std::size_t n = 0; n < axis_.years().size(); ++n) {
        const double left = leftOf(static_cast<int>(n) * 12);
        painter.drawLine(QPointF(left, room.bottom()), QPointF(left, room.bottom() + 4));
        if (static_cast<int>(n) % step != 0) continue;
        painter.drawText(QRectF(left + 3, room.bottom() + 2, label * 2, fontMetrics().height()),
                         Qt::AlignLeft, QString::number(axis_.years()[n]));
    }
}

void YearStrip::paintFocus(QPainter& painter) const
{
    if (!hasFocus()) return;
    painter.setPen(palette().color(QPalette::Highlight));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

}
