#include "platform/forms/cut_tips.h"

#include "platform/forms/qt_text.h"

#include <QAbstractItemView>
#include <QHeaderView>
#include <QHelpEvent>
#include <QToolTip>

namespace tolvek {

namespace {

// The tip goes when the pointer leaves `place`, a part of the viewport.
bool showTip(const QHelpEvent& event, QWidget& viewport, const QRect& place, const QString& text)
{
    QToolTip::showText(event.globalPos(), tipText(text), &viewport, place);
    return true;
}

// Owned by its headings.
class HeadingTips : public QObject {
public:
    explicit HeadingTips(QHeaderView& headings) : QObject(&headings), headings_(headings)
    {
        headings.viewport()->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() != QEvent::ToolTip) return false;
        auto& help = *static_cast<QHelpEvent*>(event);
        const int section = headings_.logicalIndexAt(help.pos());
        const QString text =
            headings_.model()->headerData(section, headings_.orientation()).toString();
        return section >= 0 && isCut(section, text) &&
               showTip(help, *headings_.viewport(), placeOf(section), text);
    }

private:
    QRect placeOf(int section) const
    {
        const int from = headings_.sectionViewportPosition(section);
        const int size = headings_.sectionSize(section);
        return headings_.orientation() == Qt::Horizontal ? QRect(from, 0, size, headings_.height())
                                                         : QRect(0, from, headings_.width(), size);
    }
    bool isCut(int section, const QString& text) const
    {
        const int margin = headings_.style()->pixelMetric(QStyle::PM_HeaderMargin);
        return headings_.fontMetrics().horizontalAdvance(text) + 2 * margin >
               placeOf(section).width();
    }

    QHeaderView& headings_;
};

}

bool CutTips::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                        const QStyleOptionViewItem& option, const QModelIndex& index)
{
    if (event->type() != QEvent::ToolTip || !index.isValid()) return false;
    // Part of a wide row may be scrolled out of the view.
    const QRect shown = option.rect & view->viewport()->rect();
    const bool isCut = sizeHint(option, index).width() > shown.width();
    return isCut && showTip(*event, *view->viewport(), shown, index.data().toString());
}

void addCutTips(QHeaderView& headings)
{
    new HeadingTips(headings);
}

}
