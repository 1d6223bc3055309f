#include "platform/forms/list_box.h"
#include "platform/forms/cut_tips.h"
#include "platform/forms/menu.h"
#include "platform/forms/qt_text.h"
#include "platform/runtime/runtime_error.h"

#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>

namespace tolvek {

ListBox::ListBox(Container container, TextView name)
    : ControlOf(container, name), model_(new ListBoxModel(this))
{
    setModel(model_);
    setItemDelegate(new CutTips(this));
    setUniformItemSizes(true); // otherwise every row would be measured before the first is shown
    setEditTriggers(NoEditTriggers);
    setSelectionMode(SingleSelection);
    setTextElideMode(Qt::ElideNone);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTabKeyNavigation(false);
}

void ListBox::Clear()
{
    listIndex_ = -1;
    model_->clear();
}

int ListBox::ListCount() const
{
    return model_->count();
}

const tolvek::Text& ListBox::List(int index) const
{
    if (index < 0 || index >= ListCount()) throw RuntimeError(9);
    return model_->at(index);
}

void ListBox::setList(int index, TextView text)
{
    if (index < 0 || index > ListCount()) throw RuntimeError(5);
    if (index == ListCount())
        model_->append(text);
    else
        model_->replace(index, text);
}

void ListBox::setListIndex(int index)
{
    if (index < -1 || index >= ListCount()) throw RuntimeError(380);
    select(index);
    if (index >= 0) emit Click();
}

tolvek::Text ListBox::Text() const
{
    return listIndex_ < 0 ? tolvek::Text() : List(listIndex_);
}

void ListBox::select(int index)
{
    listIndex_ = index;
    if (index < 0)
        selectionModel()->clear();
    else
        selectionModel()->setCurrentIndex(model_->index(index),
                                          QItemSelectionModel::ClearAndSelect);
}

void ListBox::mousePressEvent(QMouseEvent* event)
{
    const QPoint pos = event->position().toPoint();
    if (event->button() == Qt::RightButton) emit RightButton(pos);
    if (event->button() != Qt::LeftButton) return;
    const int row = indexAt(pos).row();
    // Kept quirk: on an empty list Click fires with ListIndex -1.
    if (row < 0 && ListCount() > 0) return;
    if (row >= 0) select(row);
    emit Click();
}

// Only the press counts: neither dragging nor releasing selects.
void ListBox::mouseMoveEvent(QMouseEvent* event)
{
    event->accept();
}

void ListBox::mouseReleaseEvent(QMouseEvent* event)
{
    event->accept();
}

// The second press of a double click counts as a press too.
void ListBox::mouseDoubleClickEvent(QMouseEvent* event)
{
    mousePressEvent(event);
}

int ListBox::rowForKey(int key) const
{
    const int rowHeight = std::max(1, sizeHintForRow(0));
    const int page = std::max(1, viewport()->height() / rowHeight - 1);
    const int last = ListCount() - 1;
    switch (key) {
    case Qt::Key_Up:
    case Qt::Key_Left: // in a single column all four arrow keys move
        return std::max(0, listIndex_ - 1);
    case Qt::Key_Down:
    case Qt::Key_Right:
        return std::min(last, listIndex_ + 1);
    case Qt::Key_PageUp:
        return std::max(0, listIndex_ - page);
    case Qt::Key_PageDown:
        return std::min(last, std::max(0, listIndex_) + page);
    case Qt::Key_Home:
        return 0;
    case Qt::Key_End:
        return last;
    default:
        return -1;
    }
}

// Where a menu belongs that is opened by key.
QPoint ListBox::menuPosition() const
{
    const QRect view = viewport()->rect();
    const QRect entry = visualRect(currentIndex()) & view;
    return entry.isEmpty() ? view.topLeft() : entry.bottomLeft();
}

void ListBox::keyPressEvent(QKeyEvent* event)
{
    if (opensMenu(*event)) return emit RightButton(menuPosition());
    const int row = ListCount() > 0 ? rowForKey(event->key()) : -1;
    if (row < 0) return searchByKey(event);
    // At either end of the list a key moves nothing, so it fires nothing.
    if (row == listIndex_) return;
    select(row);
    emit Click();
}

// Without a selection the view would make an entry of its own choice its current one,
// and a screen reader wouldn't hear the first step to it.
void ListBox::focusInEvent(QFocusEvent* event)
{
    QAbstractScrollArea::focusInEvent(event);
    viewport()->update();
}

// The toolkit's list announces each new entry as the focus, even while another control
// has it.
void ListBox::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    if (hasFocus())
        QListView::currentChanged(current, previous);
    else
        QAbstractItemView::currentChanged(current, previous);
}

// Selects the next entry, wrapping at the end, that begins with the typed
// character. A blank isn't searched for: it must not move or clear the selection.
void ListBox::searchByKey(QKeyEvent* event)
{
    const QString typed = event->text().trimmed();
    if (typed.isEmpty() || !typed[0].isPrint() || ListCount() == 0 ||
        event->modifiers().testFlag(Qt::ControlModifier))
        return event->ignore();
    // The search begins after the selected entry.
    const auto hits = model_->match(model_->index((listIndex_ + 1) % ListCount()), Qt::DisplayRole,
                                    typed, 1, Qt::MatchStartsWith | Qt::MatchWrap);
    if (hits.isEmpty() || hits.front().row() == listIndex_) return;
    select(hits.front().row());
    emit Click();
}

void ListBoxModel::clear()
{
    beginResetModel();
    entries_.clear();
    endResetModel();
}

void ListBoxModel::append(TextView text)
{
    beginInsertRows({}, count(), count());
    entries_.emplace_back(text);
    endInsertRows();
}

void ListBoxModel::replace(int index, TextView text)
{
    entries_[static_cast<std::size_t>(index)] = text;
    emit dataChanged(this->index(index), this->index(index), {Qt::DisplayRole});
}

int ListBoxModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant ListBoxModel::data(const QModelIndex& index, int role) const
{
    if (role != Qt::DisplayRole || !index.isValid()) return {};
    return paintedText(at(index.row()), u' ');
}

}
