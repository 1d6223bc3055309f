#include "platform/forms/grid_model.h"
#include "platform/forms/qt_text.h"

#include <algorithm>

namespace tolvek {

GridModel::GridModel(int rows, int cols, int fixedRows, int fixedCols, QObject* parent)
    : QAbstractTableModel(parent), cols_(cols), fixedRows_(fixedRows), fixedCols_(fixedCols),
      cells_(static_cast<std::size_t>(rows), std::vector<Text>(static_cast<std::size_t>(cols)))
{
}

void GridModel::setRows(int rows)
{
    // The model's rows are the ordinary ones; the fixed row is the view's header.
    const int before = rowCount();
    const int after = std::max(0, rows - fixedRows_);
    if (after > before)
        beginInsertRows({}, before, after - 1);
    else if (after < before)
        beginRemoveRows({}, after, before - 1);
    cells_.resize(static_cast<std::size_t>(rows),
                  std::vector<Text>(static_cast<std::size_t>(cols_)));
    if (after > before)
        endInsertRows();
    else if (after < before)
        endRemoveRows();
}

void GridModel::setCols(int cols)
{
    // A reset and not an insertion, because every row changes its length.
    beginResetModel();
    cols_ = cols;
    for (auto& row : cells_)
        row.resize(static_cast<std::size_t>(cols));
    endResetModel();
}

Text& GridModel::cell(int row, int col)
{
    return cells_[static_cast<std::size_t>(row)][static_cast<std::size_t>(col)];
}

const Text& GridModel::text(int row, int col) const
{
    return const_cast<GridModel*>(this)->cell(row, col);
}

void GridModel::setText(int row, int col, TextView text)
{
    cell(row, col) = text;
    // A cell is an item, part of a header, or the corner, which isn't shown.
    if (const QModelIndex changed = indexOf(row, col); changed.isValid())
        emit dataChanged(changed, changed, {Qt::DisplayRole});
    else if (row < fixedRows_ && col >= fixedCols_)
        emit headerDataChanged(Qt::Horizontal, col - fixedCols_, col - fixedCols_);
    else if (row >= fixedRows_)
        emit headerDataChanged(Qt::Vertical, row - fixedRows_, row - fixedRows_);
}

void GridModel::clear()
{
    for (auto& row : cells_)
        std::fill(row.begin(), row.end(), Text());
    if (rowCount() > 0 && columnCount() > 0)
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
    if (columnCount() > 0) emit headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
    if (rowCount() > 0) emit headerDataChanged(Qt::Vertical, 0, rowCount() - 1);
}

QModelIndex GridModel::indexOf(int row, int col) const
{
    if (row < fixedRows_ || col < fixedCols_) return {};
    return index(row - fixedRows_, col - fixedCols_);
}

int GridModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : std::max(0, rows() - fixedRows_);
}

int GridModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : std::max(0, cols_ - fixedCols_);
}

QVariant GridModel::data(const QModelIndex& index, int role) const
{
    if (role != Qt::DisplayRole || !index.isValid()) return {};
    // Each cell is painted on one line.
    return paintedText(text(index.row() + fixedRows_, index.column() + fixedCols_), u' ');
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    const bool across = orientation == Qt::Horizontal;
    if (role != Qt::DisplayRole || (across ? fixedRows_ : fixedCols_) == 0) return {};
    const Text& shown = across ? text(0, section + fixedCols_) : text(section + fixedRows_, 0);
    return paintedText(shown, u' ');
}

}
