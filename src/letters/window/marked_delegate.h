// Paints a cell on one line with its hits marked.
#pragma once
#include <QStyledItemDelegate>

namespace tolvek {

class MarkedDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
};

}
