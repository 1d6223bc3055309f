// Tool tips for texts that are cut: an entry, a cell or a heading that is wider than
// what is shown of it gives its whole text when the pointer rests on it.
#pragma once
#include <QStyledItemDelegate>

class QHeaderView;

namespace tolvek {

class CutTips : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;
};

void addCutTips(QHeaderView& headings);

}
