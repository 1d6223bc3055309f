#include "platform/forms/list_box_model.h"
#include "platform/forms/qt_text.h"

namespace tolvek {

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
