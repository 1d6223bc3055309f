#include "letters/window/marked_delegate.h"

#include "letters/window/colours.h"
#include "letters/window/results_model.h"

#include <QApplication>
#include <QPainter>
#include <QTextLayout>

namespace tolvek {

using namespace Qt::Literals::StringLiterals;

namespace {

QList<QTextLayout::FormatRange> formatsOf(const std::vector<Span>& marks,
                                          const LetterColours& colours, qsizetype length)
{
    QTextCharFormat format;
    format.setBackground(colours.mark);
    format.setForeground(colours.markText);
    QList<QTextLayout::FormatRange> ranges;
    for (const Span& mark : marks)
        if (static_cast<qsizetype>(mark.begin) < length)
            ranges.push_back({static_cast<int>(mark.begin), static_cast<int>(mark.length), format});
    return ranges;
}

// A hit beyond the cell's room is brought into it: the text begins shortly before it.
void bringIntoRoom(QString& text, std::vector<Span>& marks, const QFontMetrics& metrics, int room)
{
    constexpr std::size_t kBefore = 4;
    if (marks.empty()) return;
    const auto end = static_cast<qsizetype>(marks.front().begin + marks.front().length);
    if (metrics.horizontalAdvance(text.left(end) + u"…"_s) <= room) return;
    if (marks.front().begin <= kBefore) return;
    const std::size_t cut = marks.front().begin - kBefore;
    text = u"…"_s + text.mid(static_cast<qsizetype>(cut));
    for (Span& mark : marks)
        mark.begin = mark.begin - cut + 1;
}

QColor textColour(const QStyleOptionViewItem& option)
{
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    const auto group =
        option.state.testFlag(QStyle::State_Active) ? QPalette::Active : QPalette::Inactive;
    return option.palette.color(group, selected ? QPalette::HighlightedText : QPalette::Text);
}

}

void MarkedDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                           const QModelIndex& index) const
{
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    QString text = item.text;
    auto marks = index.data(ResultsModel::kMarksRole).value<std::vector<Span>>();
    item.text.clear();
    const QStyle* const style = item.widget ? item.widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);

    const QRect room = item.rect.adjusted(4, 0, -4, 0);
    bringIntoRoom(text, marks, item.fontMetrics, room.width());
    const QString shown = item.fontMetrics.elidedText(text, Qt::ElideRight, room.width());
    QTextLayout layout(shown, item.font);
    layout.setFormats(formatsOf(marks, coloursFor(item.palette), shown.size()));
    layout.beginLayout();
    QTextLine line = layout.createLine();
    layout.endLayout();
    if (!line.isValid()) return;
    painter->save();
    painter->setClipRect(item.rect);
    painter->setPen(textColour(item));
    layout.draw(painter, QPointF(room.left(), room.top() + (room.height() - line.height()) / 2));
    painter->restore();
}

}
