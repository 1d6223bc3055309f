// The strip of years: how many letters each month has, received ones upwards and sent
// ones downwards. Dragging over it narrows the search to these months; a click takes one
// month, a click on a year's number that year.
//
// Keys: left and right move by a month, Up and Down by a year, with Shift the chosen
// stretch grows, Home and End go to the ends, Escape or Delete gives the narrowing up.
// What is chosen is the widget's accessible description.
#pragma once
#include "letters/search.h"
#include "letters/window/month_axis.h"

#include <QWidget>

namespace tolvek {

class YearStrip : public QWidget {
    Q_OBJECT
public:
    explicit YearStrip(QWidget* parent = nullptr);

    void showAxis(MonthAxis axis);
    void showCounts(const std::vector<MonthCount>& counts);
    // Doesn't emit chosen().
    void showChosen(std::optional<Months> months);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    // By the user; nothing: all months.
    void chosen(const std::optional<tolvek::Months>& months);

protected:
    void paintEvent(QPaintEvent*) override;
    void mousePressEvent(QMouseEvent*) override;
    void mouseMoveEvent(QMouseEvent*) override;
    void mouseReleaseEvent(QMouseEvent*) override;
    void keyPressEvent(QKeyEvent*) override;
    bool event(QEvent*) override;

private:
    struct Cells {
        int first = 0, last = -1;
        bool any() const { return last >= first; }
    };
    QRectF plot() const;
    int cellAt(double x) const;
    double leftOf(int cell) const;
    bool isOnYears(double y) const;
    void choose(int anchor, int end);
    void chooseNone();
    void moveBy(int cells, bool extend);
    void describe();
    QString describedAt(int cell) const;
    void paintBars(QPainter& painter) const;
    void paintChosen(QPainter& painter) const;
    void paintYears(QPainter& painter) const;
    void paintFocus(QPainter& painter) const;

    MonthAxis axis_;
    std::vector<MonthCount> counts_; // by cell
    std::size_t most_ = 1;
    Cells chosen_;
    int anchor_ = 0, end_ = 0; // of the stretch being chosen
    bool dragging_ = false;
};

}
